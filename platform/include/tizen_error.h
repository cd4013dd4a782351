// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The platform's common error codes: negated errno values where one fits, module bases otherwise. A
// module's own codes are its base OR-ed with a small number.
#include <errno.h>

#define TIZEN_ERROR_MIN_PLATFORM_ERROR (-1073741824) /* -0x40000000 */
#define TIZEN_ERROR_APPLICATION_MANAGER (-0x01110000)

typedef enum {
  TIZEN_ERROR_NONE = 0,
  TIZEN_ERROR_IO_ERROR = -EIO,
  TIZEN_ERROR_OUT_OF_MEMORY = -ENOMEM,
  TIZEN_ERROR_PERMISSION_DENIED = -EACCES,
  TIZEN_ERROR_INVALID_PARAMETER = -EINVAL,
  TIZEN_ERROR_NOT_SUPPORTED = TIZEN_ERROR_MIN_PLATFORM_ERROR | 2, /* -1073741822 */
} tizen_error_e;
