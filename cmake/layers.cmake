# The layers of the design. LINKS are the arrows: a layer includes only what it links.
find_package(PkgConfig REQUIRED)
pkg_check_modules(PCRE2 REQUIRED IMPORTED_TARGET libpcre2-8)
pkg_check_modules(LIBZIP REQUIRED IMPORTED_TARGET libzip)
pkg_check_modules(CURL REQUIRED IMPORTED_TARGET libcurl)
pkg_check_modules(CRYPTO REQUIRED IMPORTED_TARGET libcrypto)
pkg_check_modules(QRENCODE REQUIRED IMPORTED_TARGET libqrencode)
pkg_check_modules(JPEG REQUIRED IMPORTED_TARGET libjpeg)
pkg_check_modules(TIFF REQUIRED IMPORTED_TARGET libtiff-4)
pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo-ft freetype2)
pkg_check_modules(HTTPLIB REQUIRED IMPORTED_TARGET cpp-httplib)
find_library(HPDF hpdf REQUIRED)
find_package(nlohmann_json 3.11 REQUIRED)
find_package(CLI11 REQUIRED)

kvd_layer(kvd_text FOLDERS src/text)
if(WIN32)
  set(KVD_SYSTEM windows)
else()
  set(KVD_SYSTEM posix)
endif()
kvd_layer(kvd_os FOLDERS src/os src/os/${KVD_SYSTEM} LINKS kvd_text PRIVATE_LINKS PkgConfig::CURL)

# Two-dimensional codes; it knows nothing of models.
kvd_layer(kvd_barcode FOLDERS src/barcode PRIVATE_LINKS PkgConfig::QRENCODE)

# Headers alone: what the plug-in asks of Creo. A build for a real Creo implements them in place of creo_headless.
add_library(creo INTERFACE)
target_include_directories(creo INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_link_libraries(creo INTERFACE kvd_text)

# The one target that knows OpenCASCADE; of its libraries those that build, measure, read, write and mesh bodies.
find_path(OCCT_INCLUDES BRepPrimAPI_MakeBox.hxx PATH_SUFFIXES opencascade REQUIRED)
# From release 7.8 on STEP and IGES are one toolkit each, TKDESTEP and TKDEIGES.
find_library(OCCT_STEP TKDESTEP)
if(OCCT_STEP)
  set(OCCT_EXCHANGE TKDESTEP TKDEIGES)
else()
  set(OCCT_EXCHANGE TKXDESTEP TKXDEIGES TKSTEP TKSTEPBase TKIGES)
endif()
kvd_layer(kvd_geometry FOLDERS src/headless/geometry LINKS creo kvd_os
  PRIVATE_LINKS nlohmann_json::nlohmann_json ${OCCT_EXCHANGE} TKXSBase TKXCAF TKLCAF TKCDF TKMesh TKBO TKPrim TKTopAlgo
  TKBRep TKG3d TKG2d TKMath TKernel)
target_include_directories(kvd_geometry SYSTEM PRIVATE ${OCCT_INCLUDES})
# STEP and IGES are read by a program of its own, which is looked for beside the code that asks and in the folder above.
add_executable(kelvane-import ${CMAKE_SOURCE_DIR}/apps/import/main.cpp)
target_link_libraries(kelvane-import PRIVATE kvd_geometry kvd_flags)
target_link_options(kelvane-import PRIVATE LINKER:--as-needed)  # what isn't loaded costs no start
set_target_properties(kelvane-import PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})

kvd_layer(creo_headless
  FOLDERS src/headless src/headless/session src/headless/model src/headless/store src/headless/macros src/headless/proui
          src/headless/vault src/headless/exports src/headless/pictures src/headless/creo
  LINKS creo kvd_os kvd_geometry nlohmann_json::nlohmann_json PRIVATE_LINKS PkgConfig::CAIRO PkgConfig::JPEG
  PkgConfig::TIFF ${HPDF})

kvd_layer(kvd_plugin
  FOLDERS src/core src/documents src/engine src/actions src/actions/environment src/actions/model src/actions/drawing
          src/actions/exports src/reports src/reports/sheet src/ui
  LINKS creo kvd_os kvd_barcode PRIVATE_LINKS ${HPDF} PkgConfig::PCRE2 PkgConfig::LIBZIP PkgConfig::CRYPTO)

# What a host loads: the plug-in over the headless session, with just its two entries visible.
add_library(kelvane_user SHARED ${CMAKE_BINARY_DIR}/empty.cpp)
target_link_libraries(kelvane_user PRIVATE -Wl,--whole-archive kvd_plugin -Wl,--no-whole-archive creo_headless)
target_link_options(kelvane_user PRIVATE -Wl,--version-script=${CMAKE_SOURCE_DIR}/cmake/exports.map)
add_dependencies(kelvane_user kelvane-import)
set_target_properties(kelvane_user PROPERTIES LINK_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/exports.map)

file(GLOB kelvane_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/apps/kelvane/*.cpp ${CMAKE_SOURCE_DIR}/apps/kelvane/*.h
  ${CMAKE_SOURCE_DIR}/apps/kelvane/ui/*.cpp ${CMAKE_SOURCE_DIR}/apps/kelvane/ui/*.h)
list(FILTER kelvane_sources EXCLUDE REGEX "/main\\.cpp$")
# The page of `kelvane ui` is part of the program.
set(kelvane_web_folder ${CMAKE_SOURCE_DIR}/apps/kelvane/web)
file(GLOB kelvane_web CONFIGURE_DEPENDS ${kelvane_web_folder}/*)
set(kelvane_web_scripts basics.js words.js lines.js parts.js ui.js)
set(kelvane_web_source ${CMAKE_BINARY_DIR}/page.cpp)
add_custom_command(OUTPUT ${kelvane_web_source}
  COMMAND ${CMAKE_COMMAND} -DFOLDER=${kelvane_web_folder} "-DSCRIPTS=${kelvane_web_scripts}" -DOUTPUT=${kelvane_web_source}
    -P ${CMAKE_SOURCE_DIR}/cmake/embed.cmake
  DEPENDS ${kelvane_web} ${CMAKE_SOURCE_DIR}/cmake/embed.cmake VERBATIM)
add_library(kelvane_verbs STATIC ${kelvane_sources} ${kelvane_web_source} ${CMAKE_BINARY_DIR}/empty.cpp)
target_include_directories(kelvane_verbs PUBLIC ${CMAKE_SOURCE_DIR}/apps)
target_precompile_headers(kelvane_verbs REUSE_FROM kvd_pch)
target_link_libraries(kelvane_verbs PUBLIC kvd_plugin creo_headless PRIVATE kvd_flags CLI11::CLI11 PkgConfig::LIBZIP PkgConfig::HTTPLIB PkgConfig::CRYPTO)
add_executable(kelvane ${CMAKE_SOURCE_DIR}/apps/kelvane/main.cpp)
target_link_libraries(kelvane PRIVATE kelvane_verbs kvd_flags)
set_target_properties(kelvane PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
add_dependencies(kelvane kelvane-import)
