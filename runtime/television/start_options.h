// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "television/fields.h"
#include "television/installed_applications.h"
#include "tvset/faults.h"

namespace orvane::television {

// What the server process wants to have started, from the "options" of its first frame.
struct StartOptions {
  std::string state_folder;  // empty: the set's default
  std::string profile;       // empty: the set's default
  InstalledApplication app;
  pid_t pid = 0;  // of the application; 0: this process
  std::vector<tvset::Fault> faults;
  std::vector<std::string> extensions;        // libraries or folders, before the project's own
  std::chrono::milliseconds deadline{10000};  // of a synchronous message's reply
  bool test_hooks = false;                    // debug.crash is there
  int64_t last_log_line = 0;                  // the number after which those of the log go on
};

StartOptions ReadStartOptions(const Fields& fields);  // throws RequestError

}  // namespace orvane::television
