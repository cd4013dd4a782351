// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Application manager calls for the platform's own components. Older images do not have them.
#include <app_manager.h>

#ifdef __cplusplus
extern "C" {
#endif

// The application whose window has the focus; APP_MANAGER_ERROR_NO_SUCH_APP when none has. The
// caller releases *app_context with app_context_destroy.
int app_manager_get_focused_app_context(app_context_h* app_context);

#ifdef __cplusplus
}  // extern "C"
#endif
