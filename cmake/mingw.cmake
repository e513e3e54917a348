# Builds for Windows with Debian's cross compiler: cmake --toolchain cmake/mingw.cmake. KVD_LIBRARIES (also from the
# environment) is where tools/windows_libraries has laid the libraries that Debian doesn't bring for it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(KVD_TRIPLET x86_64-w64-mingw32)
# The threads of the standard library are in this flavour alone.
set(CMAKE_C_COMPILER ${KVD_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KVD_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${KVD_TRIPLET}-windres)
# GNU ar needs minutes for an archive of many small sections.
find_program(KVD_LLVM_AR llvm-ar)
find_program(KVD_LLVM_RANLIB llvm-ranlib)
if(KVD_LLVM_AR AND KVD_LLVM_RANLIB)
  set(CMAKE_AR ${KVD_LLVM_AR} CACHE FILEPATH "")
  set(CMAKE_RANLIB ${KVD_LLVM_RANLIB} CACHE FILEPATH "")
endif()

# Windows 10; all calls with wide texts; the libraries are part of what is built.
set(CMAKE_C_FLAGS_INIT "-D_WIN32_WINNT=0x0A00")
set(CMAKE_CXX_FLAGS_INIT "-D_WIN32_WINNT=0x0A00 -DUNICODE -D_UNICODE -DNOMINMAX -DWIN32_LEAN_AND_MEAN -DPCRE2_STATIC -DZIP_STATIC -DCURL_STATICLIB")
# Nothing of the compiler's has to lie on the user's machine.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static")
endforeach()

if(NOT KVD_LIBRARIES)
  set(KVD_LIBRARIES $ENV{KVD_LIBRARIES})
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KVD_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH ${KVD_LIBRARIES} /usr/${KVD_TRIPLET})
set(CMAKE_PREFIX_PATH ${KVD_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
# Of pkg-config what lies there and is Debian's for Windows, with what static libraries need themselves.
set(ENV{PKG_CONFIG_LIBDIR} ${KVD_LIBRARIES}/lib/pkgconfig:/usr/${KVD_TRIPLET}/lib/pkgconfig)
set(PKG_CONFIG_ARGN --static)
