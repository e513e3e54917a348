# Operations that a trace hears (src/trace). Out of the declarations of src/creo one function an operation is written,
# which asks the tape before the real one; the linker puts it in the real one's place (--wrap) in a program or library
# that asks for it, whoever implements the operations. Nothing else is compiled anew, and no line of the plug-in, the
# session or an adapter knows of it.
#
# Windows' own linker can't do that. There the floors of the plug-in are compiled with a header that gives each operation
# the name of its function (KVD_HEARD_BY_NAME; not tried).
#
# Included, it defines kvd_traced(TARGET OPERATIONS...): a program or library whose operations are heard, linked before
# what implements them; and kvd_hears(FLOOR...), which does what has to be done with floors of the plug-in. Run with -P
# and WHAT=functions it writes the functions of HEADERS into OUTPUTS (both with "|" between them), in which REAL stands
# before the name of an operation itself, and the header NAMES; it fails where a row of ROWS has no declaration that it can
# read or a declaration has no row. With WHAT=symbols it makes of the ARCHIVE of these functions OUTPUT, in which they
# have the names that the linker looks for, and OPTIONS, a file of options for it.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  set(KVD_HEARD_BY_NAME OFF)
  if(MSVC)
    set(KVD_HEARD_BY_NAME ON)
  endif()
  file(GLOB KVD_HEARD_HEADERS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/creo/Pro*.h ${CMAKE_SOURCE_DIR}/src/creo/pfc*.h)
  file(GLOB row_files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/creo/operations/*.cpp)
  set(script ${CMAKE_SOURCE_DIR}/cmake/trace.cmake)
  set(heard ${CMAKE_BINARY_DIR}/heard)
  set(sources "")
  foreach(number RANGE 1 3)  # several files compile side by side
    list(APPEND sources ${heard}/functions${number}.cpp)
  endforeach()
  list(JOIN KVD_HEARD_HEADERS "|" headers)
  list(JOIN sources "|" outputs)
  add_custom_command(OUTPUT ${sources} ${heard}/names.h
    COMMAND ${CMAKE_COMMAND} -DWHAT=functions "-DHEADERS=${headers}" "-DOUTPUTS=${outputs}" -DNAMES=${heard}/names.h
      -DREAL=$<$<NOT:$<BOOL:${KVD_HEARD_BY_NAME}>>:real> -DROWS=${CMAKE_SOURCE_DIR}/src/creo/operations -P ${script}
    DEPENDS ${KVD_HEARD_HEADERS} ${row_files} ${script} VERBATIM)
  add_library(kvd_heard_functions STATIC ${sources})
  target_link_libraries(kvd_heard_functions PRIVATE kvd_trace kvd_flags)
  if(KVD_SANITIZE)  # they hand on what they get; so they compile three times as fast
    target_compile_options(kvd_heard_functions PRIVATE -O0 -fno-sanitize=all)
  endif()
  if(KVD_HEARD_BY_NAME)
    add_custom_target(kvd_heard_names DEPENDS ${heard}/names.h)
    function(kvd_hears)
      foreach(floor ${ARGN})
        add_dependencies(${floor} kvd_heard_names)
        target_compile_options(${floor} PRIVATE /FI${CMAKE_BINARY_DIR}/heard/names.h)
      endforeach()
    endfunction()
    function(kvd_traced target)
      target_link_libraries(${target} PRIVATE kvd_heard_functions kvd_trace ${ARGN})
    endfunction()
    return()
  endif()
  add_custom_command(OUTPUT ${heard}/libheard.a ${heard}/options
    COMMAND ${CMAKE_COMMAND} -DWHAT=symbols -DARCHIVE=$<TARGET_FILE:kvd_heard_functions> -DOUTPUT=${heard}/libheard.a
      -DOPTIONS=${heard}/options -DNM=${CMAKE_NM} -DOBJCOPY=${CMAKE_OBJCOPY} -P ${script}
    DEPENDS kvd_heard_functions ${script} VERBATIM)
  add_custom_target(kvd_heard DEPENDS ${heard}/libheard.a ${heard}/options)
  function(kvd_hears)
  endfunction()
  function(kvd_traced target)
    add_library(kvd_heard_by_${target} STATIC IMPORTED)
    set_target_properties(kvd_heard_by_${target} PROPERTIES IMPORTED_LOCATION ${CMAKE_BINARY_DIR}/heard/libheard.a)
    target_link_libraries(kvd_heard_by_${target} INTERFACE kvd_trace ${ARGN})
    add_dependencies(${target} kvd_heard)
    if(MINGW)  # whose linker looks at an archive once, and at some of those that ask for it behind it
      target_link_libraries(${target} PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,kvd_heard_by_${target}>)
    else()
      target_link_libraries(${target} PRIVATE kvd_heard_by_${target})
    endif()
    target_link_options(${target} PRIVATE @${CMAKE_BINARY_DIR}/heard/options)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS
      ${CMAKE_BINARY_DIR}/heard/libheard.a ${CMAKE_BINARY_DIR}/heard/options)
  endfunction()
  return()
endif()

cmake_minimum_required(VERSION 3.25)

# The declarations of a header as text: "Got<ProMdl> ProMdlInit(const std::wstring& name, ProMdlType type)".
function(declarations header result)
  file(READ ${header} text)
  string(REPLACE ";" "@" text "${text}")
  string(REGEX REPLACE "//[^\n]*" "" text "${text}")
  string(REGEX REPLACE "[ \n\t]+" " " text "${text}")
  string(REGEX MATCHALL "(Got<[^@{}()]*>|ProError|ProFilename|int) (Pro|pfc)[A-Za-z0-9]+\\([^@{}]*\\)@" found "${text}")
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

# One function that stands for an operation; with REAL before its name it is the operation itself.
function(heard_function declaration result)
  string(REGEX MATCH "^(.*[>A-Za-z]) ((Pro|pfc)[A-Za-z0-9]+)\\((.*)\\)@$" whole "${declaration}")
  set(type ${CMAKE_MATCH_1})
  set(name ${CMAKE_MATCH_2})
  string(REGEX REPLACE " = [^,]+" "" parameters "${CMAKE_MATCH_4}")
  set(values "")
  string(REGEX MATCHALL "[A-Za-z]+(,|$)" names "${parameters}")
  foreach(parameter ${names})
    string(REPLACE "," "" parameter "${parameter}")
    string(APPEND values ", std::forward<decltype(${parameter})>(${parameter})")
  endforeach()
  set(${result} "${type} ${REAL}${name}(${parameters});
${type} heard${name}(${parameters}) {
  ${type} (*const real)(${parameters}) = ${REAL}${name};
  return trace::call(\"${name}\", real${values});
}
" PARENT_SCOPE)
endfunction()

function(write_functions)
  string(REPLACE "|" ";" headers "${HEADERS}")
  string(REPLACE "|" ";" outputs "${OUTPUTS}")
  list(LENGTH outputs count)
  set(known "")
  set(at 0)
  foreach(header ${headers})
    get_filename_component(file ${header} NAME)
    declarations(${header} found)
    math(EXPR part "${at} % ${count}")
    foreach(declaration ${found})
      string(REGEX REPLACE "^.* ((Pro|pfc)[A-Za-z0-9]+)\\(.*$" "\\1" name "${declaration}")
      list(APPEND known ${name})
      heard_function("${declaration}" function)
      string(APPEND functions${part} "${function}")
    endforeach()
    string(APPEND includes${part} "#include \"creo/${file}\"\n")
    math(EXPR at "${at} + 1")
  endforeach()

  set(rows "")
  file(GLOB row_files ${ROWS}/*.cpp)
  foreach(file ${row_files})
    file(STRINGS ${file} lines REGEX "\\.name = \"[A-Za-z0-9]+\"")
    foreach(line ${lines})
      string(REGEX REPLACE "^.*\\.name = \"([A-Za-z0-9]+)\".*$" "\\1" name "${line}")
      list(APPEND rows ${name})
    endforeach()
  endforeach()
  set(deaf ${rows})
  list(REMOVE_ITEM deaf ${known})
  list(REMOVE_ITEM known ${rows})
  if(deaf OR known)
    message(FATAL_ERROR "no trace would hear ${deaf}; without a row in src/creo/operations: ${known}")
  endif()

  list(JOIN rows "|" names)
  string(REGEX REPLACE "([A-Za-z0-9]+)[|]?" "#define \\1 heard\\1\n" names "${names}")
  file(WRITE ${NAMES} "${names}")

  math(EXPR last "${count} - 1")
  foreach(part RANGE ${last})
    list(GET outputs ${part} output)
    file(WRITE ${output} "${includes${part}}#include \"trace/call.h\"
namespace {
[[maybe_unused]] const bool isHeard = trace::noteHeard();
}
namespace creo {
${functions${part}}}  // namespace creo\n")
  endforeach()
endfunction()

# heard... gets the name of what is put in the operation's place, real... that of the operation behind it.
function(rename_symbols)
  execute_process(COMMAND ${NM} --format=just-symbols ${ARCHIVE} OUTPUT_FILE ${OUTPUT}.symbols
    COMMAND_ERROR_IS_FATAL ANY ERROR_QUIET)
  file(STRINGS ${OUTPUT}.symbols symbols REGEX "^_ZN4creo[0-9]+(heard|real)(Pro|pfc)")
  list(REMOVE_DUPLICATES symbols)
  set(renamed "")
  set(options "")
  foreach(symbol ${symbols})
    string(REGEX MATCH "^_ZN4creo([0-9]+)(heard|real)((Pro|pfc).*)$" whole "${symbol}")
    if(CMAKE_MATCH_2 STREQUAL "heard")
      math(EXPR length "${CMAKE_MATCH_1} - 5")
      string(APPEND renamed "${symbol} __wrap__ZN4creo${length}${CMAKE_MATCH_3}\n")
      string(APPEND options "-Wl,--wrap=_ZN4creo${length}${CMAKE_MATCH_3}\n")
    else()
      math(EXPR length "${CMAKE_MATCH_1} - 4")
      string(APPEND renamed "${symbol} __real__ZN4creo${length}${CMAKE_MATCH_3}\n")
    endif()
  endforeach()
  file(WRITE ${OUTPUT}.renamed "${renamed}")
  execute_process(COMMAND ${OBJCOPY} --redefine-syms=${OUTPUT}.renamed ${ARCHIVE} ${OUTPUT} COMMAND_ERROR_IS_FATAL ANY)
  file(WRITE ${OPTIONS} "${options}")
endfunction()

if(WHAT STREQUAL "functions")
  write_functions()
else()
  rename_symbols()
endif()
