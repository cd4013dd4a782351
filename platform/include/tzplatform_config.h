// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Where the platform keeps things: folders and names of the image. Callable from any thread. Texts
// are interned: valid while the process lives, never freed by the caller.

#include <tzplatform_variables.h>

#ifdef __cplusplus
extern "C" {
#endif

// NULL for a number that is no variable, and for an internal error.
const char* tzplatform_getenv(enum tzplatform_variable id);
// _TZPLATFORM_VARIABLES_INVALID_ for a name that is no variable.
enum tzplatform_variable tzplatform_getid(const char* name);
const char* tzplatform_getname(enum tzplatform_variable id);

#ifdef __cplusplus
}  // extern "C"
#endif
