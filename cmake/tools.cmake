# Compiler cache and a fast linker where they are installed; warnings and sanitizers for our own targets.
file(WRITE ${CMAKE_BINARY_DIR}/empty.cpp "")
# One cache serves every clone: paths count from the clone's root, and the precompiled header is known by what makes it.
find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
    CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_PCH_EXTSUM=1 ${CCACHE})
endif()
find_program(MOLD mold)
if(MOLD AND NOT WIN32)
  add_link_options(-fuse-ld=mold)
endif()
find_program(LLD ld.lld)
if(LLD AND MINGW AND CMAKE_CROSSCOMPILING)
  add_link_options("SHELL:-wrapper ${CMAKE_SOURCE_DIR}/cmake/mingw_lld" -fno-use-linker-plugin)
  # Without the states that CMake pushes for bfd.
  set(CMAKE_CXX_LINK_LIBRARY_USING_WHOLE_ARCHIVE LINKER:--whole-archive <LINK_ITEM> LINKER:--no-whole-archive)
  set(CMAKE_CXX_LINK_LIBRARY_USING_WHOLE_ARCHIVE_SUPPORTED TRUE)
endif()

add_library(kvd_flags INTERFACE)
if(MSVC)  # also clang-cl; not tried
  target_compile_options(kvd_flags INTERFACE /utf-8 /permissive- /EHsc /Zc:__cplusplus /Zc:preprocessor /W4
    $<$<BOOL:${KVD_WERROR}>:/WX>)
  target_compile_definitions(kvd_flags INTERFACE _WIN32_WINNT=0x0A00 UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
else()
  target_compile_options(kvd_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -Wformat=2 -Wunused $<$<BOOL:${KVD_WERROR}>:-Werror> -fno-math-errno)
endif()
# Programs would be compiled with -fPIE, for which the libraries' precompiled header is no use.
target_compile_options(kvd_flags INTERFACE $<$<AND:$<CXX_COMPILER_ID:GNU,Clang>,$<NOT:$<PLATFORM_ID:Windows>>>:-fPIC>)
# GCC 12 sees overlaps and overflows in optimised std::string code that aren't there (its bug 105651).
target_compile_options(kvd_flags INTERFACE $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>>:-Wno-stringop-overflow -Wno-restrict -Wno-array-bounds>)
if(KVD_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(KVD_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()

if(KVD_FUZZ)  # the fuzzer sees which ways of the code an input takes
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# kvd_precompiled(NAME): the standard library alone is precompiled: it never changes, so one change of ours rebuilds only
# what includes it.
function(kvd_precompiled name)
  add_library(${name} OBJECT ${CMAKE_SOURCE_DIR}/cmake/pch.cpp)
  target_link_libraries(${name} PRIVATE kvd_flags)
  target_precompile_headers(${name} PRIVATE
    <algorithm> <array> <chrono> <cstdint> <filesystem> <functional> <map> <memory> <optional> <set> <span> <string>
    <string_view> <system_error> <unordered_map> <unordered_set> <utility> <variant> <vector>)
  target_compile_options(${name} PRIVATE ${ARGN})
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${name}.dir/cmake_pch.hxx.gch.sum
    "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} ${CMAKE_BUILD_TYPE} ${KVD_SANITIZE} ${CMAKE_CXX_FLAGS} ${ARGN}")
endfunction()
kvd_precompiled(kvd_pch)

# kvd_include_path(NAME VISIBILITY TREE FOLDERS...): an include path of its own for these folders of a tree (src, apps),
# under which they are called as ever: "actions/task.h". It holds links alone. As nothing else of the tree is found
# there, a file can include only what its library links.
function(kvd_include_path name visibility tree)
  set(place ${CMAKE_BINARY_DIR}/include/${name})
  foreach(folder ${ARGN})
    get_filename_component(above ${place}/${folder} DIRECTORY)
    file(MAKE_DIRECTORY ${above})
    if(NOT EXISTS ${place}/${folder})
      if(CMAKE_HOST_WIN32)  # where a symbolic link needs a right that few have
        file(TO_NATIVE_PATH ${place}/${folder} link)
        file(TO_NATIVE_PATH ${CMAKE_SOURCE_DIR}/${tree}/${folder} target)
        execute_process(COMMAND cmd /c mklink /J ${link} ${target} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
      else()
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${tree}/${folder} ${place}/${folder} SYMBOLIC)
      endif()
    endif()
  endforeach()
  target_include_directories(${name} ${visibility} ${place})
endfunction()

# kvd_layer(NAME FOLDERS... [TREE tree] [WITHOUT folders or files...] [ONLY files...] [HEADERS files...]
# [LINKS targets...] [PRIVATE_LINKS targets...]): a static library of all sources of these folders of a tree (src where
# none is said), and of those inside them, or of some alone. It includes itself, these headers and what it links.
function(kvd_layer name)
  cmake_parse_arguments(ARG "" "TREE" "FOLDERS;HEADERS;LINKS;PRIVATE_LINKS;WITHOUT;ONLY" ${ARGN})
  if(NOT ARG_TREE)
    set(ARG_TREE src)
  endif()
  set(sources "")
  foreach(folder ${ARG_FOLDERS})
    set(place ${CMAKE_SOURCE_DIR}/${ARG_TREE}/${folder})
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${place}/*.cpp ${place}/*.h)
    list(APPEND sources ${found})
  endforeach()
  foreach(path ${ARG_WITHOUT})
    list(FILTER sources EXCLUDE REGEX "/${ARG_TREE}/${path}(/|$)")
  endforeach()
  if(ARG_ONLY)
    list(TRANSFORM ARG_ONLY PREPEND ${CMAKE_SOURCE_DIR}/${ARG_TREE}/ OUTPUT_VARIABLE sources)
  endif()
  add_library(${name} STATIC ${sources} ${CMAKE_BINARY_DIR}/empty.cpp)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  kvd_include_path(${name} PUBLIC ${ARG_TREE} ${ARG_FOLDERS} ${ARG_HEADERS})
  target_precompile_headers(${name} REUSE_FROM kvd_pch)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE kvd_flags ${ARG_PRIVATE_LINKS})
endfunction()
