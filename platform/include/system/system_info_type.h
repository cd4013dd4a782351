// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Results of the system information library.
#include <tizen.h>

typedef enum {
  SYSTEM_INFO_ERROR_NONE = TIZEN_ERROR_NONE,
  SYSTEM_INFO_ERROR_IO_ERROR = TIZEN_ERROR_IO_ERROR,
  SYSTEM_INFO_ERROR_OUT_OF_MEMORY = TIZEN_ERROR_OUT_OF_MEMORY,
  SYSTEM_INFO_ERROR_PERMISSION_DENIED = TIZEN_ERROR_PERMISSION_DENIED,
  // Also: no such key, and a key of another type.
  SYSTEM_INFO_ERROR_INVALID_PARAMETER = TIZEN_ERROR_INVALID_PARAMETER,
  SYSTEM_INFO_ERROR_NOT_SUPPORTED = TIZEN_ERROR_NOT_SUPPORTED,
} system_info_error_e;
