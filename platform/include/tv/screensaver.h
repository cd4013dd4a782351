// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The television's screen saver. Each call answers 0 for success.

#ifdef __cplusplus
extern "C" {
#endif

// The application that the screen saver shows; "DEFAULT" gives it back to the set's own.
int screensaver_set_appid(const char* app_id);
// Seconds without input until the screen saver comes on; 0 is the set's own default.
int screensaver_set_timeout(int seconds);
// Starts the wait for the screen saver afresh.
int screensaver_reset_timeout(void);

#ifdef __cplusplus
}  // extern "C"
#endif
