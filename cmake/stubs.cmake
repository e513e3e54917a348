# What the plug-in is linked against where it has neither the headless session nor an adapter: an import library of a
# library "creo_adapter" that isn't there, for all operations that the plug-in asks. So it shows that nothing else is
# missing, and that each of them has its row in src/creo/operations. Windows alone can link so.
#
# Included, it defines KVD_STUBS, the import library. Run with -P it makes it of LIBRARIES (the floors, with "|" between
# them), with NM, FILT and DLLTOOL, into OUTPUT; ROWS is the folder of the rows, HEARD the linker's options for what a trace
# hears: all operations, as it stands before each.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  if(NOT MINGW)
    message(FATAL_ERROR "without the headless session the plug-in needs KVD_ADAPTER")
  endif()
  find_program(KVD_FILT NAMES ${KVD_TRIPLET}-c++filt c++filt REQUIRED)
  # In the import library of GNU's dlltool lld puts the hearing function behind an operation, too, where it calls itself.
  find_program(KVD_DLLTOOL NAMES llvm-dlltool REQUIRED)
  set(floors kvd_plugin kvd_ui kvd_run kvd_reports kvd_actions kvd_documents kvd_language kvd_core)
  set(files "")
  foreach(floor ${floors})
    list(APPEND files $<TARGET_FILE:${floor}>)
  endforeach()
  list(JOIN files "|" files)
  set(KVD_STUBS ${CMAKE_BINARY_DIR}/libcreo_adapter.dll.a)
  set(rows ${CMAKE_SOURCE_DIR}/src/creo/operations)
  file(GLOB row_files CONFIGURE_DEPENDS ${rows}/*.cpp)
  add_custom_command(OUTPUT ${KVD_STUBS}
    COMMAND ${CMAKE_COMMAND} "-DLIBRARIES=${files}" -DNM=${CMAKE_NM} -DFILT=${KVD_FILT} -DDLLTOOL=${KVD_DLLTOOL}
      -DROWS=${rows} -DHEARD=${CMAKE_BINARY_DIR}/heard/options -DOUTPUT=${KVD_STUBS} -P ${CMAKE_SOURCE_DIR}/cmake/stubs.cmake
    DEPENDS ${floors} ${row_files} ${CMAKE_BINARY_DIR}/heard/options ${CMAKE_SOURCE_DIR}/cmake/stubs.cmake VERBATIM)
  add_custom_target(kvd_stubs DEPENDS ${KVD_STUBS})
  return()
endif()

cmake_minimum_required(VERSION 3.25)

# The operations by their rows.
set(known "")
file(GLOB row_files ${ROWS}/*.cpp)
foreach(file ${row_files})
  file(STRINGS ${file} lines REGEX "\\.name = \"[A-Za-z0-9]+\"")
  foreach(line ${lines})
    string(REGEX MATCH "\\.name = \"([A-Za-z0-9]+)\"" found "${line}")
    list(APPEND known ${CMAKE_MATCH_1})
  endforeach()
endforeach()

# Those that the floors ask: symbols without a definition, in the namespace of the operations.
string(REPLACE "|" ";" libraries "${LIBRARIES}")
execute_process(COMMAND ${NM} -u --format=just-symbols ${libraries} OUTPUT_FILE ${OUTPUT}.symbols
  COMMAND_ERROR_IS_FATAL ANY ERROR_QUIET)
file(STRINGS ${OUTPUT}.symbols symbols REGEX "^_ZN4creo")
list(REMOVE_DUPLICATES symbols)
list(LENGTH symbols count)
if(count EQUAL 0)
  message(FATAL_ERROR "the plug-in asks for no operation")
endif()

set(exports "LIBRARY creo_adapter.dll\nEXPORTS\n")
set(unknown "")
set(lines "")
foreach(symbol ${symbols})
  string(APPEND lines "${symbol}\n")
endforeach()
file(STRINGS ${HEARD} heard)
list(TRANSFORM heard REPLACE "^-Wl,--wrap=" "")
list(APPEND heard ${symbols})
list(REMOVE_DUPLICATES heard)
foreach(symbol ${heard})
  string(APPEND exports "  ${symbol}\n")
endforeach()
file(WRITE ${OUTPUT}.symbols "${lines}")
execute_process(COMMAND ${FILT} INPUT_FILE ${OUTPUT}.symbols OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)creo::[A-Za-z0-9_]+" asked "${names}")
foreach(name ${asked})
  string(REGEX REPLACE "^.*creo::" "" name "${name}")
  if(NOT name IN_LIST known)
    list(APPEND unknown ${name})
  endif()
endforeach()
if(unknown)
  list(JOIN unknown " " unknown)
  message(FATAL_ERROR "asked of Creo, but without a row in src/creo/operations: ${unknown}")
endif()
file(WRITE ${OUTPUT}.def "${exports}")
execute_process(COMMAND ${DLLTOOL} -m i386:x86-64 -d ${OUTPUT}.def -l ${OUTPUT} COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "${count} stubs stand for operations")
