// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The platform's settings: one value per key, shared by all processes of the device.
#include <vconf-keys.h>

#ifdef __cplusplus
extern "C" {
#endif

#define VCONF_OK 0
#define VCONF_ERROR (-1)

#define VCONF_TYPE_STRING 40
#define VCONF_TYPE_INT 41
#define VCONF_TYPE_DOUBLE 42
#define VCONF_TYPE_BOOL 43
#define VCONF_TYPE_DIR 44

typedef struct _keynode_t keynode_t;

// Called on the default GLib main context with the current value, not once for each change.
typedef void (*vconf_callback_fn)(keynode_t* node, void* user_data);

// VCONF_OK, or a negative code: test for non-zero, not for one value.
int vconf_set_str(const char* in_key, const char* strval);

// The caller frees the result with free(). NULL: an error, or the stored value is no string.
char* vconf_get_str(const char* in_key);

// The key must exist, and a pair of key and callback can be registered once.
int vconf_notify_key_changed(const char* in_key, vconf_callback_fn cb, void* user_data);
int vconf_ignore_key_changed(const char* in_key, vconf_callback_fn cb);

#ifdef __cplusplus
}  // extern "C"
#endif
