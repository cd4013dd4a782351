// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

// Questions about applications, asked of the platform's application services. No state, any thread;
// each call blocks for as long as the service takes. Nothing throws for a failure of the platform:
// the cause is logged, and the result is false or empty.
class AppUtil {
 public:
  // The calling application's id up to its first ".", that is, its package. True with a text from
  // strdup in `app_id`, which the caller frees.
  static bool GetAppID(char** app_id);

  // The calling application's whole id. True with a text from strdup in `app_id`, which the caller
  // frees.
  static bool GetCompleteAppID(char** app_id);

  // The id of the application that has the focus; empty when none has.
  static std::string GetFocusedAppID();

  // What the calling application's package declares for `key`; empty when it declares nothing.
  static std::string GetMetadataValue(std::string key);

  // "FOREGROUND", "BACKGROUND", "SERVICE", "TERMINATED" or "UNDEFINED"; empty when the application
  // has no run state to ask for, as one that does not run. An empty `app_id` means the calling
  // application.
  static std::string GetAppState(std::string app_id);
};
