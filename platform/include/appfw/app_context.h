// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// A running application as it was when the context was obtained: id, process and state are a
// snapshot that never changes. A context only holds data, so any thread may read it.
#include <sys/types.h>

#include <tizen.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct app_context_s* app_context_h;

typedef enum {
  APP_STATE_UNDEFINED = 0,
  APP_STATE_FOREGROUND = 1,
  APP_STATE_BACKGROUND = 2,
  APP_STATE_SERVICE = 3,
  APP_STATE_TERMINATED = 4,
} app_state_e;

// Each of these answers an app_manager_error_e.

// The caller frees *app_id with free().
int app_context_get_app_id(app_context_h app_context, char** app_id);
int app_context_get_pid(app_context_h app_context, pid_t* pid);
int app_context_get_app_state(app_context_h app_context, app_state_e* state);
int app_context_destroy(app_context_h app_context);

#ifdef __cplusplus
}  // extern "C"
#endif
