// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XW_Extension.h"

#ifdef __cplusplus
extern "C" {
#endif

#define XW_INTERNAL_PERMISSIONS_INTERFACE_1 "XW_Internal_PermissionsInterface_1"
#define XW_INTERNAL_PERMISSIONS_INTERFACE XW_INTERNAL_PERMISSIONS_INTERFACE_1

// Both answer XW_OK or XW_ERROR.
typedef struct XW_Internal_PermissionsInterface_1 {
  int (*CheckAPIAccessControl)(XW_Extension extension, const char* api_name);
  int (*RegisterPermissions)(XW_Extension extension, const char* permission_table);
} XW_Internal_PermissionsInterface_1;

typedef XW_Internal_PermissionsInterface_1 XW_Internal_PermissionsInterface;

#ifdef __cplusplus
}  // extern "C"
#endif
