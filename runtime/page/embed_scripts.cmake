# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0

# cmake -DFOLDER=… -DOUTPUT=… -DBUNDLE=… -P embed_scripts.cmake
# Joins the script files of FOLDER into BUNDLE: main.js with the other files where its marks stand. A file that has a mark
# of its own (partTimers for timers.js) goes there, the others become the cases of the switch with the line "// @parts".
# Writes that and the extension wrapper as C++ to OUTPUT. Each file is comments and one statement, a
# function in parentheses; comments before it and its semicolon go.

set(wrapper extension_wrapper.js)
file(GLOB files RELATIVE ${FOLDER} ${FOLDER}/*.js)
list(SORT files)

function(read_statement path result)
  file(READ ${path} text)
  string(REGEX REPLACE "\\);[ \n]*$" ")" text "${text}")
  string(FIND "${text}" "\n(function" start)
  string(SUBSTRING "${text}" ${start} -1 text)
  string(STRIP "${text}" text)
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

read_statement(${FOLDER}/main.js main)
set(parts "")
foreach(file IN LISTS files)
  if(NOT file STREQUAL main.js AND NOT file STREQUAL ${wrapper})
    read_statement(${FOLDER}/${file} text)
    string(REGEX REPLACE "\\.js$" "" name ${file})
    string(SUBSTRING ${name} 0 1 initial)
    string(TOUPPER ${initial} initial)
    string(SUBSTRING ${name} 1 -1 rest)
    set(mark "part${initial}${rest}")
    if(main MATCHES "${mark}\\(")
      string(REPLACE "${mark}(" "${text}(" main "${main}")
    else()
      string(APPEND parts "case '${name}':\nreturn ${text}(use, bridge, builtins);\n")
    endif()
  endif()
endforeach()
if(NOT main MATCHES "// @parts\n")
  message(FATAL_ERROR "main.js has no line \"// @parts\"")
endif()
string(REPLACE "// @parts\n" "${parts}" bundle "${main}")
file(WRITE ${BUNDLE} "${bundle}")

read_statement(${FOLDER}/${wrapper} text)
string(FIND "${text}" "/* @script */" mark)
if(mark EQUAL -1)
  message(FATAL_ERROR "${wrapper} has no mark \"/* @script */\"")
endif()
string(SUBSTRING "${text}" 0 ${mark} head)
string(SUBSTRING "${text}" ${mark} -1 tail)
string(REPLACE "/* @script */" "" tail "${tail}")
string(REGEX REPLACE "//[^\n]*\n" "" head "${head}")
string(REGEX REPLACE "[ \n]+" " " head "${head}")
file(WRITE ${BUNDLE}.head "${head}")
file(WRITE ${BUNDLE}.tail "${tail}")

# As numbers, so that neither quoting nor the length of a literal matters.
function(append_array name path)
  file(READ ${path} hex HEX)
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${hex}")
  string(REGEX REPLACE "('[^']*',){16}" "\\0\n" bytes "${bytes}")
  file(APPEND ${OUTPUT} "constexpr char k${name}[] = {\n${bytes}'\\0'};\n\n")
endfunction()

file(WRITE ${OUTPUT} "// Made by embed_scripts.cmake from js/*.js.\n#include \"page/script_files.h\"\n\n")
file(APPEND ${OUTPUT} "namespace orvane::page {\nnamespace {\n\n")
append_array(PageScript ${BUNDLE})
append_array(ExtensionWrapperHead ${BUNDLE}.head)
append_array(ExtensionWrapperTail ${BUNDLE}.tail)
file(APPEND ${OUTPUT} "}  // namespace\n\n")
foreach(name PageScript ExtensionWrapperHead ExtensionWrapperTail)
  file(APPEND ${OUTPUT} "std::string_view ${name}() { return {k${name}, sizeof k${name} - 1}; }\n")
endforeach()
file(APPEND ${OUTPUT} "\n}  // namespace orvane::page\n")
