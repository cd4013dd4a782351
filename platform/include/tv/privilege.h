// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Whether an installed application declares a privilege.

#ifdef __cplusplus
extern "C" {
#endif

// 0: granted. -13: not granted. -22: a NULL argument. -3: no such application.
int privilege_check_application(const char* app_id, const char* privilege);

#ifdef __cplusplus
}  // extern "C"
#endif
