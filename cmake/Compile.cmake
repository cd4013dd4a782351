# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0
# Flags that every target shares. Warnings are errors everywhere, so that what passes here passes in CI.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT ORVANE_LINT)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
                    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>)

# Binaries name sources from the repository's root, wherever that lies on the machine that builds. A debugger that is
# started there finds them. Relative paths, which the compiler cache makes, begin with the way up from the build folder.
# Of two that fit, the later one counts. What measures coverage writes its figures by absolute paths.
if(NOT ORVANE_COVERAGE)
  file(RELATIVE_PATH way_up ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR})
  add_compile_options(-ffile-prefix-map=${CMAKE_SOURCE_DIR}/= -ffile-prefix-map=${way_up}=
                      -ffile-prefix-map=${CMAKE_BINARY_DIR}=.)
endif()

if(ORVANE_SANITIZE)
  add_compile_options(-fsanitize=${ORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ORVANE_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # With the sanitizers' checks in between, GCC no longer sees what is initialised: false alarms in <regex>.
    add_compile_options(-Wno-maybe-uninitialized)
    # Asio's fences, which the thread sanitizer does not follow, order nothing that one thread does by itself.
    add_compile_options(-Wno-tsan)
  endif()
  add_library(sanitizer-options OBJECT ${CMAKE_CURRENT_LIST_DIR}/sanitizers/options.cc)
  link_libraries($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:sanitizer-options>)
endif()
# A unique symbol that another library binds to keeps its library from being unloaded. Clang makes none.
set(ORVANE_NO_UNIQUE_SYMBOLS $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
if(ORVANE_LINT)
  include(Lint)
endif()
if(ORVANE_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
if(ORVANE_LTO)
  include(CheckIPOSupported)
  check_ipo_supported()
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
  # The products alone: tests link the same objects in their other form, as each would optimise half the runtime anew.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND NOT ORVANE_DEVICE)
    list(TRANSFORM CMAKE_CXX_COMPILE_OPTIONS_IPO REPLACE -fno-fat-lto-objects -ffat-lto-objects)
    list(TRANSFORM CMAKE_C_COMPILE_OPTIONS_IPO REPLACE -fno-fat-lto-objects -ffat-lto-objects)
  endif()
endif()
