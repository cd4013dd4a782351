// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The platform's key-value parcel, handed from one application to another. Nothing on the desktop
// reads one; the type is here because the application utilities name it.
#ifdef __cplusplus
extern "C" {
#endif

typedef struct _bundle_t bundle;

#ifdef __cplusplus
}  // extern "C"
#endif
