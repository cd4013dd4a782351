// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Application utilities: which application a process belongs to.
#include <bundle.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef enum _aul_return_val {
  AUL_R_EREJECTED = -14,
  AUL_R_ENOAPP = -13,
  AUL_R_EHIDDENFORGUEST = -11,
  AUL_R_ENOLAUNCHPAD = -10,
  AUL_R_ETERMINATING = -9,
  AUL_R_EILLACC = -8,
  AUL_R_LOCAL = -7,
  AUL_R_ETIMEOUT = -6,
  AUL_R_ECANCELED = -5,
  AUL_R_EINVAL = -4,
  AUL_R_ECOMM = -3,
  AUL_R_ENOINIT = -2,
  AUL_R_ERROR = -1,
  AUL_R_OK = 0,
} aul_return_val;

enum app_status {
  STATUS_LAUNCHING = 0,
  STATUS_CREATED = 1,
  STATUS_FOCUS = 2,
  STATUS_VISIBLE = 3,
  STATUS_BG = 4,
  STATUS_DYING = 5,
  STATUS_HOME = 6,
  STATUS_NORESTART = 7,
  STATUS_SERVICE = 8,
};

// Writes the id into the caller's buffer of len bytes: always terminated, cut when it does not fit.
int aul_app_get_appid_bypid(int pid, char* appid, int len);

#ifdef __cplusplus
}  // extern "C"
#endif
