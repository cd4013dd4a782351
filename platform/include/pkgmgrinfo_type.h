// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Handles and results of the package information library.

typedef void* pkgmgrinfo_appinfo_h;

typedef enum _pkgmgrinfo_return_val {
  PMINFO_R_OK = 0,
  PMINFO_R_ERROR = -1,
  PMINFO_R_EINVAL = -2,
  PMINFO_R_ENOENT = -3,
} pkgmgrinfo_return_val;
