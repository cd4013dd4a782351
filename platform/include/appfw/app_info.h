// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// A handle on what is installed about an application.
#include <tizen.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct app_info_s* app_info_h;

#ifdef __cplusplus
}  // extern "C"
#endif
