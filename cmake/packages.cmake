# Read by cpack, once a kind of package: the archive takes the libraries along.
if(CPACK_GENERATOR STREQUAL "TGZ")
  set(CPACK_COMPONENTS_ALL program libraries)
else()
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()
