// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stddef.h>

#include "XW_Extension.h"

#ifdef __cplusplus
extern "C" {
#endif

#define XW_INTERNAL_RUNTIME_INTERFACE_1 "XW_Internal_RuntimeInterface_1"
#define XW_INTERNAL_RUNTIME_INTERFACE XW_INTERNAL_RUNTIME_INTERFACE_1

typedef struct XW_Internal_RuntimeInterface_1 {
  // Writes the variable as JSON text into `value`, cut to `value_len` bytes and always terminated;
  // an unknown key gives an empty text. Known while XW_Initialize runs: "extension_path" and
  // "app_id" (both strings).
  void (*GetRuntimeVariableString)(XW_Extension extension, const char* key, char* value,
                                   size_t value_len);
} XW_Internal_RuntimeInterface_1;

typedef XW_Internal_RuntimeInterface_1 XW_Internal_RuntimeInterface;

#ifdef __cplusplus
}  // extern "C"
#endif
