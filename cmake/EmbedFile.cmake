# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0

# orvane_embed_file(TARGET FILE NAME)
# Puts the bytes of FILE, which may be one that the build makes, into TARGET. They are declared as
#   extern "C" const char NAME[], NAMEEnd[];
# A zero byte stands at NAMEEnd, so a text is also a C string.
function(orvane_embed_file target file name)
  get_filename_component(path ${file} ABSOLUTE)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}.files/${name}.S)
  file(CONFIGURE OUTPUT ${source} @ONLY CONTENT [[
.section .rodata.@name@, "a", %progbits
.globl @name@, @name@End
.hidden @name@, @name@End
.type @name@, %object
@name@:
.incbin "@path@"
@name@End:
.byte 0
.size @name@, . - @name@
.section .note.GNU-stack, "", %progbits
]])
  # Debug information would hold the paths, and nothing else.
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS ${path} COMPILE_OPTIONS -g0)
  target_sources(${target} PRIVATE ${source})
endfunction()
