# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0
# What the library stands on when it is built for a set: the target `orvane_platform`, made of the set's own
# development packages, found by pkg-config. For a sysroot, set PKG_CONFIG_SYSROOT_DIR and PKG_CONFIG_LIBDIR.

include(GNUInstallDirs)
find_package(PkgConfig REQUIRED)

# These have no public name; a set's makers give theirs.
set(ORVANE_PKG_SCREENSAVER capi-screensaver CACHE STRING "pkg-config name of the screen saver's library")
set(ORVANE_PKG_AUTOINPUT autoinput CACHE STRING "pkg-config name of the key injection's library")
set(ORVANE_PKG_CONTEXT_MANAGER app-context-manager CACHE STRING "pkg-config name of the context manager's library")
set(ORVANE_PKG_FRAMEWORK webapi-framework CACHE STRING "pkg-config name of the web-API framework")

pkg_check_modules(ORVANE_SET REQUIRED IMPORTED_TARGET
  capi-base-common capi-appfw-app-manager aul pkgmgr-info capi-system-info vconf libtzplatform-config dlog uuid
  ${ORVANE_PKG_SCREENSAVER} ${ORVANE_PKG_AUTOINPUT} ${ORVANE_PKG_CONTEXT_MANAGER} ${ORVANE_PKG_FRAMEWORK})

# Libraries of headers only, beside the set's own headers or where the compiler looks by itself.
find_path(ORVANE_PICOJSON_FOLDER picojson.h HINTS ${ORVANE_SET_INCLUDE_DIRS} REQUIRED)
find_path(ORVANE_BOOST_FOLDER boost/format.hpp HINTS ${ORVANE_SET_INCLUDE_DIRS} REQUIRED)

add_library(orvane_platform INTERFACE)
target_include_directories(orvane_platform SYSTEM INTERFACE ${ORVANE_PICOJSON_FOLDER} ${ORVANE_BOOST_FOLDER})
target_link_libraries(orvane_platform INTERFACE PkgConfig::ORVANE_SET)

# Where a set's web runtime looks for extensions, and the file that lets it load this one only when a page
# first touches its name.
set(ORVANE_EXTENSION_FOLDER ${CMAKE_INSTALL_LIBDIR}/tizen-extensions-crosswalk)

# orvane_install_extension(TARGET)
function(orvane_install_extension target)
  set(ORVANE_LIBRARY_FILE $<TARGET_FILE_NAME:${target}>)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/orvane.json.in orvane.json.in @ONLY)
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/orvane.json INPUT ${CMAKE_CURRENT_BINARY_DIR}/orvane.json.in)
  install(TARGETS ${target} LIBRARY DESTINATION ${ORVANE_EXTENSION_FOLDER})
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/orvane.json DESTINATION ${ORVANE_EXTENSION_FOLDER})
endfunction()
