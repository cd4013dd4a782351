// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the package database knows about an installed application. A handle has no lock: one thread
// each.
#include <pkgmgrinfo_type.h>

#ifdef __cplusplus
extern "C" {
#endif

// Unknown applications: PMINFO_R_ENOENT. The caller releases *handle with
// pkgmgrinfo_appinfo_destroy_appinfo.
int pkgmgrinfo_appinfo_get_appinfo(const char* appid, pkgmgrinfo_appinfo_h* handle);

// Keys compare without case and the first match wins; a key that is not there is PMINFO_R_EINVAL.
// *metadata_value belongs to the handle: copy it before the handle goes, never free it.
int pkgmgrinfo_appinfo_get_metadata_value(pkgmgrinfo_appinfo_h handle, const char* metadata_key,
                                          char** metadata_value);
int pkgmgrinfo_appinfo_destroy_appinfo(pkgmgrinfo_appinfo_h handle);

#ifdef __cplusplus
}  // extern "C"
#endif
