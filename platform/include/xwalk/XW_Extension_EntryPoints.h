// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XW_Extension.h"

#ifdef __cplusplus
extern "C" {
#endif

#define XW_INTERNAL_ENTRY_POINTS_INTERFACE_1 "XW_Internal_EntryPointsInterface_1"
#define XW_INTERNAL_ENTRY_POINTS_INTERFACE XW_INTERNAL_ENTRY_POINTS_INTERFACE_1

typedef struct XW_Internal_EntryPointsInterface_1 {
  // `entry_points` ends with NULL: further dotted names that load the extension when a page touches
  // them.
  void (*SetExtraJSEntryPoints)(XW_Extension extension, const char** entry_points);
} XW_Internal_EntryPointsInterface_1;

typedef XW_Internal_EntryPointsInterface_1 XW_Internal_EntryPointsInterface;

#ifdef __cplusplus
}  // extern "C"
#endif
