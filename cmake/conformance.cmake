# What the author of an adapter takes along: the conformance lists as a package, the models that they are about, what the
# headless session is asked for by them, and what compares. It is all text work, so that a build without the program
# makes it too.
#
# Included, it defines the target kvd_conformance, which fills the folder conformance of the build. Run with -P it fills
# FOLDER out of SOURCE.
if(NOT CMAKE_SCRIPT_MODE_FILE)
  set(source ${CMAKE_SOURCE_DIR}/conformance)
  set(script ${CMAKE_SOURCE_DIR}/cmake/conformance.cmake)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS ${source}/*)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/conformance/conformance.kvz
    COMMAND ${CMAKE_COMMAND} -DSOURCE=${source} -DFOLDER=${CMAKE_BINARY_DIR}/conformance -P ${script}
    DEPENDS ${files} ${script} VERBATIM)
  add_custom_target(kvd_conformance ALL DEPENDS ${CMAKE_BINARY_DIR}/conformance/conformance.kvz)
  return()
endif()

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
foreach(part README.md traces.py person.py unreached.txt models sessions expected)
  file(COPY ${SOURCE}/${part} DESTINATION ${FOLDER})
endforeach()
# A package that lacks one of its folders is taken for damaged.
set(inside ${FOLDER}/inside)
file(COPY ${SOURCE}/package/ DESTINATION ${inside})
foreach(folder checklist models reports)
  if(NOT EXISTS ${inside}/${folder}/readme.txt)
    file(WRITE ${inside}/${folder}/readme.txt "Of the conformance lists.\n")
  endif()
endforeach()
file(GLOB members RELATIVE ${inside} ${inside}/*)
execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${FOLDER}/conformance.kvz --format=zip ${members}
  WORKING_DIRECTORY ${inside} COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE ${inside})
file(GLOB lists RELATIVE ${SOURCE}/package/actionlists ${SOURCE}/package/actionlists/*.xml)
list(TRANSFORM lists REPLACE "[.]xml$" "")
list(SORT lists)
list(JOIN lists "\n" lists)
file(WRITE ${FOLDER}/lists.txt "${lists}\n")
