# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0
# The script that the library carries.
include(EmbedFile)

get_filename_component(_script_text_root ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
set(ORVANE_DEVICE_KEYS ${_script_text_root}/src/orvane/device_keys.json CACHE FILEPATH
    "The 27 keys of the set's own remote control")
set(ORVANE_SCRIPT_TEXT ${CMAKE_BINARY_DIR}/generated/orvane_api.js)

# The rule that makes the script; added once, by the first target that carries it.
function(_orvane_script_text_rule)
  if(TARGET orvane-script-text)
    return()
  endif()
  if(NOT EXISTS ${ORVANE_DEVICE_KEYS})
    message(FATAL_ERROR "ORVANE_DEVICE_KEYS is ${ORVANE_DEVICE_KEYS}, which does not exist. "
                        "Give the path of a device key file, or leave the option out.")
  endif()
  find_program(ORVANE_NODE NAMES node nodejs REQUIRED DOC "Node.js, which runs the script's build")
  set(sources ${_script_text_root}/src/orvane)
  file(GLOB inputs CONFIGURE_DEPENDS ${sources}/api/*.js ${sources}/build/*.mjs
       ${_script_text_root}/keys/*.js)
  add_custom_command(
    OUTPUT ${ORVANE_SCRIPT_TEXT}
    COMMAND ${ORVANE_NODE} ${sources}/build/make_script_text.mjs --device-keys ${ORVANE_DEVICE_KEYS}
            --js ${ORVANE_SCRIPT_TEXT}
    DEPENDS ${inputs} ${ORVANE_DEVICE_KEYS} ${_script_text_root}/cmake/bundle.mjs
            ${_script_text_root}/package-lock.json
    COMMENT "Making the script text"
    VERBATIM)
  add_custom_target(orvane-script-text DEPENDS ${ORVANE_SCRIPT_TEXT})
endfunction()

# orvane_add_script_text(TARGET): puts kSource_orvane_api into TARGET, and adds the folder below
# which its header is found.
function(orvane_add_script_text target)
  _orvane_script_text_rule()
  orvane_embed_file(${target} ${ORVANE_SCRIPT_TEXT} kSource_orvane_api)
  target_include_directories(${target} PRIVATE ${_script_text_root}/src)
  add_dependencies(${target} orvane-script-text)
endfunction()
