# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0
# The lint preset: a "compilation" is clang-tidy over the source and the compiler's list of what it includes, so that
# the build system knows which files to look into again. Objects and what is linked of them are empty files.

find_program(ORVANE_CLANG_TIDY clang-tidy REQUIRED)
set(CMAKE_CXX_CLANG_TIDY ${ORVANE_CLANG_TIDY} --quiet)
set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
set(ORVANE_NO_UNIQUE_SYMBOLS "")  # a flag that clang-tidy does not know

set(touch "<CMAKE_COMMAND> -E touch")
foreach(language C CXX)
  set(CMAKE_${language}_COMPILE_OBJECT
    "<CMAKE_${language}_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -fsyntax-only <SOURCE>" "${touch} <OBJECT>")
  set(CMAKE_${language}_ARCHIVE_CREATE "${touch} <TARGET>")
  set(CMAKE_${language}_ARCHIVE_APPEND "${touch} <TARGET>")
  set(CMAKE_${language}_ARCHIVE_FINISH "")
  set(CMAKE_${language}_CREATE_SHARED_LIBRARY "${touch} <TARGET>")
  set(CMAKE_${language}_CREATE_SHARED_MODULE "${touch} <TARGET>")
  set(CMAKE_${language}_LINK_EXECUTABLE "${touch} <TARGET>")
endforeach()

# Another text of the rules is another command.
set(rules ${CMAKE_SOURCE_DIR}/.clang-tidy ${CMAKE_SOURCE_DIR}/src/.clang-tidy)
set_property(DIRECTORY ${CMAKE_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${rules})
set(texts "")
foreach(file IN LISTS rules)
  file(READ ${file} text)
  string(APPEND texts "${text}")
endforeach()
string(SHA256 hash "${texts}")
add_compile_definitions(ORVANE_LINT_RULES=0x${hash})

# What the build generates is held against next to nothing: clang-tidy wants one check.
file(WRITE ${CMAKE_BINARY_DIR}/.clang-tidy "Checks: '-*,misc-definitions-in-headers'\nInheritParentConfig: false\n")
