// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Questions about running applications. Each call may block on the platform's own services.
#include <app_context.h>
#include <app_info.h>
#include <tizen.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef enum {
  APP_MANAGER_ERROR_NONE = TIZEN_ERROR_NONE,
  APP_MANAGER_ERROR_INVALID_PARAMETER = TIZEN_ERROR_INVALID_PARAMETER,
  APP_MANAGER_ERROR_OUT_OF_MEMORY = TIZEN_ERROR_OUT_OF_MEMORY,
  APP_MANAGER_ERROR_IO_ERROR = TIZEN_ERROR_IO_ERROR,
  APP_MANAGER_ERROR_PERMISSION_DENIED = TIZEN_ERROR_PERMISSION_DENIED,
  APP_MANAGER_ERROR_NOT_SUPPORTED = TIZEN_ERROR_NOT_SUPPORTED,
  APP_MANAGER_ERROR_NO_SUCH_APP = TIZEN_ERROR_APPLICATION_MANAGER | 1,     /* -17891327 */
  APP_MANAGER_ERROR_DB_FAILED = TIZEN_ERROR_APPLICATION_MANAGER | 3,       /* -17891325 */
  APP_MANAGER_ERROR_INVALID_PACKAGE = TIZEN_ERROR_APPLICATION_MANAGER | 4, /* -17891324 */
  APP_MANAGER_ERROR_APP_NO_RUNNING = TIZEN_ERROR_APPLICATION_MANAGER | 5,  /* -17891323 */
  APP_MANAGER_ERROR_REQUEST_FAILED = TIZEN_ERROR_APPLICATION_MANAGER | 6,  /* -17891322 */
} app_manager_error_e;

// The caller releases *app_context with app_context_destroy. An application that does not run has
// no context: APP_MANAGER_ERROR_NO_SUCH_APP.
int app_manager_get_app_context(const char* app_id, app_context_h* app_context);

#ifdef __cplusplus
}  // extern "C"
#endif
