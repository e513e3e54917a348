# What `cmake --install` lays down, and the packages that cpack makes of it: a .deb that names what it depends on, and a
# .tar.gz with the libraries inside, which runs where it is unpacked.
include(GNUInstallDirs)

# The manual and the completions say what the program itself says of its verbs.
set(manual ${CMAKE_BINARY_DIR}/manual)
set(verbs run lists check trust explain actions predicates help schema init eval why models show new diff runs replay undo purge watch
  ui pack report log vault completion man)
set(manual_commands COMMAND kelvane man > ${manual}/kelvane.1)
foreach(verb ${verbs})
  list(APPEND manual_commands COMMAND kelvane man ${verb} > ${manual}/kelvane-${verb}.1)
endforeach()
foreach(shell bash zsh fish)
  list(APPEND manual_commands COMMAND kelvane completion ${shell} > ${manual}/${shell})
endforeach()
add_custom_command(OUTPUT ${manual}/made
  COMMAND ${CMAKE_COMMAND} -E make_directory ${manual} ${manual_commands} COMMAND ${CMAKE_COMMAND} -E touch ${manual}/made
  DEPENDS kelvane VERBATIM)
add_custom_target(manual ALL DEPENDS ${manual}/made)

set(documents ${CMAKE_INSTALL_DATAROOTDIR}/doc/kelvane)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)
set(programs kelvane)
if(KVD_SOLIDS)
  list(APPEND programs kelvane-import)
endif()
install(TARGETS ${programs} RUNTIME_DEPENDENCY_SET libraries RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS kelvane_user LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/kelvane)
# A host that loads the library finds the program that reads STEP and IGES beside it.
if(KVD_SOLIDS)
  install(TARGETS kelvane-import RUNTIME DESTINATION ${CMAKE_INSTALL_LIBDIR}/kelvane)
endif()
install(DIRECTORY installation/ DESTINATION ${CMAKE_INSTALL_DATADIR}/kelvane PATTERN "icons" EXCLUDE)
install(DIRECTORY docs/ DESTINATION ${documents})
install(DIRECTORY examples DESTINATION ${documents})
install(DIRECTORY ${CMAKE_BINARY_DIR}/conformance DESTINATION ${documents} USE_SOURCE_PERMISSIONS)
install(FILES README.md DESTINATION ${documents})
install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1")
install(FILES ${manual}/bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kelvane)
install(FILES ${manual}/zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions RENAME _kelvane)
install(FILES ${manual}/fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME kelvane.fish)

# The libraries go into the archive alone; the C library and what belongs to it are the machine's.
# The older form of the entry counts for what the libraries themselves need, too.
foreach(program ${programs})
  target_link_options(${program} PRIVATE LINKER:--disable-new-dtags)
endforeach()
set_target_properties(${programs} PROPERTIES
  INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}/kelvane;$ORIGIN")
install(RUNTIME_DEPENDENCY_SET libraries
  PRE_EXCLUDE_REGEXES "^ld-linux" "^lib(c|m|dl|rt|pthread|resolv|util)\\.so"
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/kelvane COMPONENT libraries EXCLUDE_FROM_ALL)

set(CPACK_PACKAGE_NAME kelvane)
set(CPACK_PACKAGE_VENDOR "Kelvane User")
set(CPACK_PACKAGE_CONTACT "Kelvane User <kelvane@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "runs prepared work on folders of CAD models, without the CAD")
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_COMPONENTS_ALL program)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libreoffice-calc-nogui")
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/cmake/packages.cmake)
include(CPack)
