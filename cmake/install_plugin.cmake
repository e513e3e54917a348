# What the machine of a real Creo gets: the plug-in, what it reads, and the text by which Creo loads it, as one archive
# that is unpacked where the plug-in is to lie; with the session the program too, which reads the same. What the plug-in
# is linked to beside it (KVD_ADAPTER) is the adapter's to bring.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME plugin)
install(TARGETS kelvane_user RUNTIME DESTINATION . LIBRARY DESTINATION .)
if(KVD_HEADLESS)
  install(TARGETS kelvane RUNTIME DESTINATION .)
endif()
install(DIRECTORY installation/text installation/conf ${CMAKE_BINARY_DIR}/conformance DESTINATION .)
file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/registry/protk.dat CONTENT "NAME kelvane_user
STARTUP dll
EXEC_FILE C:\\kelvane\\$<TARGET_FILE_NAME:kelvane_user>
TEXT_DIR C:\\kelvane
FAIL_TOL TRUE
END
" NEWLINE_STYLE CRLF)
install(FILES ${CMAKE_BINARY_DIR}/registry/protk.dat DESTINATION .)

set(CPACK_PACKAGE_NAME kelvane_user)
set(CPACK_PACKAGE_VENDOR "Kelvane User")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "carries out prepared changes and checks on models of Creo")
set(CPACK_GENERATOR ZIP)
set(CPACK_COMPONENTS_ALL plugin)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_STRIP_FILES ON)
include(CPack)
