# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0
if(CMAKE_CROSSCOMPILING)
  # Debian has GoogleTest's sources for this: its libraries are for the machine that builds.
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  foreach(library gtest gmock gmock_main)
    target_compile_options(${library} PRIVATE -w)
  endforeach()
else()
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)

# orvane_add_test(NAME [SERIAL] SOURCES file... [LIBRARIES target...])
# A GoogleTest program; ctest runs each of its cases on its own, in its own process. SERIAL: with no other test beside
# it, for what measures processor time.
function(orvane_add_test name)
  cmake_parse_arguments(ARG "SERIAL" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock_main)
  set(serial OFF)
  if(ARG_SERIAL)
    set(serial ON)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 120 RUN_SERIAL ${serial})
endfunction()
