// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The device's feature keys. "http://" before a key may be left out.
#include <system_info_type.h>

#ifdef __cplusplus
extern "C" {
#endif

int system_info_get_custom_int(const char* key, int* value);
int system_info_get_custom_bool(const char* key, bool* value);

// The caller frees *value with free().
int system_info_get_platform_string(const char* key, char** value);

#ifdef __cplusplus
}  // extern "C"
#endif
