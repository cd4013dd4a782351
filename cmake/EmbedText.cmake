# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0

# orvane_embed_text(TARGET FILE NAME)
# Compiles the text of FILE into TARGET, as the C string `extern "C" const char NAME[]`.
function(orvane_embed_text target file name)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${name}.c)
  get_filename_component(path ${file} ABSOLUTE)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DINPUT=${path} -DOUTPUT=${output} -DNAME=${name}
            -P ${CMAKE_CURRENT_FUNCTION_LIST_FILE}
    DEPENDS ${path} ${CMAKE_CURRENT_FUNCTION_LIST_FILE} VERBATIM)
  target_sources(${target} PRIVATE ${output})
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  # As numbers, so that neither quoting nor the length of a literal matters.
  file(READ ${INPUT} hex HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
  string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)" "\\1\n" bytes "${bytes}")
  file(WRITE ${OUTPUT} "extern const char ${NAME}[];\nconst char ${NAME}[] = {\n${bytes}0};\n")
endif()
