// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Requests to the television's context service. Each call answers 0 for success.

#ifdef __cplusplus
extern "C" {
#endif

int app_context_manager_init(void);
// Asks for an action on a target, for example "launch" on "last:source".
int app_context_manager_request_task(const char* target, const char* action);

#ifdef __cplusplus
}  // extern "C"
#endif
