# The floors of the house. LINKS are the arrows: a floor includes only what it links.
find_package(PkgConfig REQUIRED)
pkg_check_modules(PCRE2 REQUIRED IMPORTED_TARGET libpcre2-8)
pkg_check_modules(LIBZIP REQUIRED IMPORTED_TARGET libzip)
pkg_check_modules(CURL REQUIRED IMPORTED_TARGET libcurl)
pkg_check_modules(QRENCODE REQUIRED IMPORTED_TARGET libqrencode)
pkg_check_modules(QPDF REQUIRED IMPORTED_TARGET libqpdf)
if(NOT WIN32)  # which has checksums of its own
  pkg_check_modules(CRYPTO REQUIRED IMPORTED_TARGET libcrypto)
endif()
# Its static form has a name of its own, and doesn't say that it needs zlib. It has no description for CMake.
find_library(HPDF NAMES hpdf hpdfs libhpdfs REQUIRED)
find_path(HPDF_INCLUDES hpdf.h REQUIRED)
add_library(kvd_hpdf INTERFACE)
target_link_libraries(kvd_hpdf INTERFACE ${HPDF})
target_include_directories(kvd_hpdf SYSTEM INTERFACE ${HPDF_INCLUDES})
if(WIN32)
  find_library(ZLIB NAMES z libz zlib REQUIRED)
  target_link_libraries(kvd_hpdf INTERFACE ${ZLIB})
endif()
if(KVD_HEADLESS)
  if(KVD_SOLIDS)
    pkg_check_modules(JPEG REQUIRED IMPORTED_TARGET libjpeg)
    pkg_check_modules(TIFF REQUIRED IMPORTED_TARGET libtiff-4)
    pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo-ft freetype2)
  endif()
  if(WIN32)  # where it was built without encryption
    find_package(httplib REQUIRED)
    set(KVD_HTTPLIB httplib::httplib)
  else()
    pkg_check_modules(HTTPLIB REQUIRED IMPORTED_TARGET cpp-httplib)
    set(KVD_HTTPLIB PkgConfig::HTTPLIB PkgConfig::CRYPTO)
  endif()
  find_package(nlohmann_json 3.11 REQUIRED)
  find_package(CLI11 REQUIRED)
endif()

kvd_layer(kvd_text FOLDERS text)
if(WIN32)
  set(KVD_OTHER_SYSTEM os/posix)
else()
  set(KVD_OTHER_SYSTEM os/windows)
endif()
kvd_layer(kvd_os FOLDERS os WITHOUT ${KVD_OTHER_SYSTEM} LINKS kvd_text PRIVATE_LINKS PkgConfig::CURL)
if(WIN32)
  target_link_libraries(kvd_os PUBLIC ws2_32 shell32 ole32 advapi32 user32 psapi bcrypt)
else()
  target_link_libraries(kvd_os PRIVATE PkgConfig::CRYPTO)
endif()

# Two-dimensional codes; it knows nothing of models.
kvd_layer(kvd_barcode FOLDERS barcode PRIVATE_LINKS PkgConfig::QRENCODE)

# What the PDF library leaves to be put right, before it and behind it.
kvd_layer(kvd_pdf FOLDERS pdf LINKS kvd_text PRIVATE_LINKS kvd_hpdf PkgConfig::QPDF)
target_compile_definitions(kvd_pdf PRIVATE POINTERHOLDER_TRANSITION=4)  # as its headers ask: standard pointers alone

# Headers alone: what the plug-in asks of Creo. A build for a real Creo implements them in place of creo_headless.
add_library(creo INTERFACE)
kvd_include_path(creo INTERFACE src creo)
target_link_libraries(creo INTERFACE kvd_text)
# What Creo's documentation says of them, as rows; docs/host-contract.md and the tests read them.
kvd_layer(kvd_operations FOLDERS creo/operations LINKS creo)

# What a run asks of them, recorded and played back.
kvd_layer(kvd_trace FOLDERS trace LINKS creo kvd_os)

if(KVD_HEADLESS AND KVD_SOLIDS)
# The one target that knows OpenCASCADE; of its libraries those that build, measure, read, write, mesh and draw bodies.
find_path(OCCT_INCLUDES BRepPrimAPI_MakeBox.hxx PATH_SUFFIXES opencascade REQUIRED)
# From release 7.8 on STEP and IGES are one toolkit each, TKDESTEP and TKDEIGES.
find_library(OCCT_STEP TKDESTEP)
if(OCCT_STEP)
  set(OCCT_EXCHANGE TKDESTEP TKDEIGES)
else()
  set(OCCT_EXCHANGE TKXDESTEP TKXDEIGES TKSTEP TKSTEPBase TKIGES)
endif()
kvd_layer(kvd_geometry FOLDERS headless/geometry WITHOUT headless/geometry/none LINKS creo kvd_os
  PRIVATE_LINKS nlohmann_json::nlohmann_json ${OCCT_EXCHANGE} TKXSBase TKXCAF TKLCAF TKCDF TKHLR TKMesh TKBO TKPrim
  TKTopAlgo TKGeomAlgo TKBRep TKGeomBase TKG3d TKG2d TKMath TKernel)
target_include_directories(kvd_geometry SYSTEM PRIVATE ${OCCT_INCLUDES})
# STEP and IGES are read, and views worked out, by a program of its own, which is looked for beside the code that asks
# and in the folder above.
add_executable(kelvane-import ${CMAKE_SOURCE_DIR}/apps/import/main.cpp)
target_link_libraries(kelvane-import PRIVATE kvd_geometry kvd_flags)
target_link_options(kelvane-import PRIVATE LINKER:--as-needed)  # what isn't loaded costs no start
set_target_properties(kelvane-import PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
endif()

if(KVD_HEADLESS)
# In its place for a program without solids (KVD_WITHOUT_SOLIDS): what of that floor is plain arithmetic, and a body of
# the rest that refuses.
kvd_layer(kvd_flat FOLDERS headless/geometry ONLY headless/geometry/none/none.cpp headless/geometry/build_all.cpp
  headless/geometry/flat_clip.cpp headless/geometry/flat_curve.cpp headless/geometry/flat_loop.cpp LINKS creo kvd_os)
set(KVD_GEOMETRY kvd_flat)
if(KVD_SOLIDS)
  set(KVD_GEOMETRY $<IF:$<BOOL:$<TARGET_PROPERTY:KVD_WITHOUT_SOLIDS>>,kvd_flat,kvd_geometry>)
endif()

# The floors of the session, from the ground up: documents of models; models in memory; then what stands beside them; on
# top the operations, which alone know the session's whole state.
kvd_layer(kvd_store FOLDERS headless/store LINKS creo kvd_os ${KVD_GEOMETRY} nlohmann_json::nlohmann_json)
if(MINGW)  # its many small functions have more sections than the usual form of an object holds
  set_source_files_properties(${CMAKE_SOURCE_DIR}/src/headless/store/document.cpp PROPERTIES COMPILE_OPTIONS -Wa,-mbig-obj)
endif()
kvd_layer(kvd_model FOLDERS headless/model LINKS kvd_store)
kvd_layer(kvd_session FOLDERS headless/session LINKS creo kvd_os)
kvd_layer(kvd_proui FOLDERS headless/proui LINKS kvd_session kvd_store)
kvd_layer(kvd_vault FOLDERS headless/vault LINKS kvd_model)
# Likewise what draws sheets and writes pictures.
set(picture_files headless/pictures/image_files.cpp headless/pictures/png.cpp headless/pictures/sheet_image.cpp)
kvd_layer(kvd_pictures FOLDERS headless/pictures WITHOUT headless/pictures/none ${picture_files} LINKS kvd_model)
kvd_layer(kvd_no_pictures FOLDERS headless/pictures/none LINKS kvd_pictures)
set(KVD_PICTURES kvd_no_pictures)
if(KVD_SOLIDS)
  kvd_layer(kvd_picture_files FOLDERS headless/pictures ONLY ${picture_files} LINKS kvd_pictures
    PRIVATE_LINKS PkgConfig::CAIRO PkgConfig::JPEG PkgConfig::TIFF)
  set(KVD_PICTURES $<IF:$<BOOL:$<TARGET_PROPERTY:KVD_WITHOUT_SOLIDS>>,kvd_no_pictures,kvd_picture_files>)
endif()
target_link_libraries(kvd_pictures INTERFACE $<LINK_ONLY:${KVD_PICTURES}>)
kvd_layer(kvd_exports FOLDERS headless/exports LINKS kvd_pictures PRIVATE_LINKS kvd_pdf kvd_hpdf)
kvd_layer(kvd_macros FOLDERS headless/macros LINKS kvd_model kvd_session)
kvd_layer(creo_headless FOLDERS headless/creo HEADERS headless/session.h
  LINKS kvd_macros kvd_exports kvd_vault kvd_proui nlohmann_json::nlohmann_json)
if(NOT WIN32)  # a library over it offers the operations to a plug-in that is loaded; there a list says what is offered
  set_target_properties(creo_headless PROPERTIES CXX_VISIBILITY_PRESET default)
endif()

endif()

# The floors of the plug-in, from the ground up: each links, and so can include, only what lies below.
kvd_layer(kvd_core FOLDERS core LINKS creo kvd_os kvd_text)
# Who loads the plug-in brings the operations along; nothing of their inside can be included here.
if(KVD_HEADLESS)
  target_link_libraries(kvd_core INTERFACE
    $<$<NOT:$<BOOL:$<TARGET_PROPERTY:KVD_WITHOUT_SESSION>>>:$<LINK_ONLY:creo_headless>>)
endif()
# How users write texts, numbers, patterns and tables.
kvd_layer(kvd_language FOLDERS language LINKS kvd_core PRIVATE_LINKS PkgConfig::PCRE2)
kvd_layer(kvd_documents FOLDERS documents LINKS kvd_language PRIVATE_LINKS PkgConfig::LIBZIP)
kvd_layer(kvd_actions FOLDERS actions LINKS kvd_documents kvd_barcode)
kvd_layer(kvd_reports FOLDERS reports LINKS kvd_actions PRIVATE_LINKS kvd_pdf kvd_hpdf)
kvd_layer(kvd_run FOLDERS run LINKS kvd_reports PRIVATE_LINKS kvd_trace)
kvd_layer(kvd_ui FOLDERS ui LINKS kvd_run)
kvd_layer(kvd_plugin FOLDERS plugin LINKS kvd_ui PRIVATE_LINKS kvd_trace)

include(cmake/trace.cmake)
kvd_hears(kvd_core kvd_language kvd_documents kvd_actions kvd_reports kvd_run kvd_ui kvd_plugin)
# kvd_loadable(TARGET OPERATIONS...): what a host loads: the plug-in over the operations, with just its two entries visible.
function(kvd_loadable target)
  add_library(${target} SHARED ${CMAKE_BINARY_DIR}/empty.cpp)
  target_link_libraries(${target} PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,kvd_plugin>)
  kvd_traced(${target} ${ARGN})
  target_link_libraries(${target} PRIVATE ${ARGN})
  if(WIN32)  # where the entries say themselves that they are exported
    set_target_properties(${target} PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
  else()
    target_link_options(${target} PRIVATE -Wl,--version-script=${CMAKE_SOURCE_DIR}/cmake/exports.map)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/exports.map)
  endif()
endfunction()
if(KVD_HEADLESS AND NOT KVD_STUBBED)
  kvd_loadable(kelvane_user creo_headless)
  if(KVD_SOLIDS)
    add_dependencies(kelvane_user kelvane-import)
  endif()
elseif(KVD_ADAPTER)
  kvd_loadable(kelvane_user ${KVD_ADAPTER})
else()
  include(cmake/stubs.cmake)
  kvd_loadable(kelvane_user ${KVD_STUBS})
  add_dependencies(kelvane_user kvd_stubs)
  set_target_properties(kelvane_user PROPERTIES KVD_WITHOUT_SESSION ON)
  set_property(TARGET kelvane_user APPEND PROPERTY LINK_DEPENDS ${KVD_STUBS})
endif()

if(NOT KVD_HEADLESS)
  return()
endif()

# The floors of the program, from the ground up: what all of it needs; then one subject a floor; on top a file a verb.
kvd_layer(kelvane_base TREE apps FOLDERS kelvane/base LINKS kvd_os kvd_text)
kvd_layer(kelvane_log TREE apps FOLDERS kelvane/log LINKS kelvane_base kvd_language nlohmann_json::nlohmann_json)
kvd_layer(kelvane_show TREE apps FOLDERS kelvane/show LINKS kelvane_log creo_headless PRIVATE_LINKS kvd_actions)
kvd_layer(kelvane_vocabulary TREE apps FOLDERS kelvane/vocabulary LINKS kelvane_base kvd_actions
  nlohmann_json::nlohmann_json)
kvd_layer(kelvane_package TREE apps FOLDERS kelvane/package LINKS kelvane_base PRIVATE_LINKS kvd_documents
  PkgConfig::LIBZIP)
kvd_layer(kelvane_check TREE apps FOLDERS kelvane/check LINKS kelvane_package kelvane_vocabulary
  PRIVATE_LINKS kelvane_log)
kvd_layer(kelvane_trust TREE apps FOLDERS kelvane/trust LINKS kelvane_check nlohmann_json::nlohmann_json)
kvd_layer(kelvane_journal TREE apps FOLDERS kelvane/journal LINKS kelvane_show)
kvd_layer(kelvane_run TREE apps FOLDERS kelvane/run LINKS kelvane_trust kelvane_journal kvd_run PRIVATE_LINKS kvd_trace)
kvd_layer(kelvane_watch TREE apps FOLDERS kelvane/watch LINKS kelvane_run PRIVATE_LINKS kvd_trace)
kvd_layer(kelvane_ui TREE apps FOLDERS kelvane/ui LINKS kelvane_run PRIVATE_LINKS ${KVD_HTTPLIB})
kvd_layer(kelvane_verbs TREE apps FOLDERS kelvane
  WITHOUT kelvane/base kelvane/log kelvane/show kelvane/vocabulary kelvane/package kelvane/check kelvane/trust
          kelvane/journal kelvane/run
          kelvane/watch kelvane/ui kelvane/main.cpp
  LINKS kelvane_watch kelvane_ui kvd_plugin PRIVATE_LINKS CLI11::CLI11)
# The page of `kelvane ui` is part of the program.
set(kelvane_web_folder ${CMAKE_SOURCE_DIR}/apps/kelvane/web)
file(GLOB kelvane_web CONFIGURE_DEPENDS ${kelvane_web_folder}/*)
set(kelvane_web_scripts basics.js words.js lines.js parts.js ui.js)
set(kelvane_web_source ${CMAKE_BINARY_DIR}/page.cpp)
add_custom_command(OUTPUT ${kelvane_web_source}
  COMMAND ${CMAKE_COMMAND} -DFOLDER=${kelvane_web_folder} "-DSCRIPTS=${kelvane_web_scripts}" -DOUTPUT=${kelvane_web_source}
    -P ${CMAKE_SOURCE_DIR}/cmake/embed.cmake
  DEPENDS ${kelvane_web} ${CMAKE_SOURCE_DIR}/cmake/embed.cmake VERBATIM)
target_sources(kelvane_ui PRIVATE ${kelvane_web_source})
add_executable(kelvane ${CMAKE_SOURCE_DIR}/apps/kelvane/main.cpp)
target_link_libraries(kelvane PRIVATE kelvane_verbs kvd_flags)
set_target_properties(kelvane PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
if(KVD_SOLIDS)
  add_dependencies(kelvane kelvane-import)
endif()
kvd_traced(kelvane creo_headless)
