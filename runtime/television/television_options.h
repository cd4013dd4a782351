// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "app/web_application.h"
#include "base/json_fields.h"
#include "television/set_fields.h"
#include "tvset/keys.h"

namespace orvane::television {

// What is to be started. Its JSON is the "options" of the server's request to start.
struct TelevisionOptions {
  std::string state_folder;  // empty: the set's default
  std::string profile;       // empty: the set's default
  tvset::Application app;
  pid_t pid = 0;                        // of the application; 0: this process
  std::vector<std::string> faults;      // as ParseFault takes them
  std::vector<std::string> extensions;  // libraries or folders, before the program's own
  int64_t deadline_ms = 10000;          // of a synchronous message's reply
  bool test_hooks = false;              // debug.crash is there
};

template <class Map>
void MapFields(Map& map, TelevisionOptions& options) {
  constexpr int64_t kLongestDeadline = 24LL * 60 * 60 * 1000;
  map.Optional("state", options.state_folder);
  map.Optional("profile", options.profile);
  map("app", options.app);
  map.Optional("pid", options.pid, base::Range{0, std::numeric_limits<pid_t>::max()});
  map.Optional("faults", options.faults);
  map.Optional("extensions", options.extensions);
  map.Optional("deadlineMs", options.deadline_ms, base::Range{1, kLongestDeadline});
  map.Optional("testHooks", options.test_hooks);
}

// What comes with the program that runs the television.
struct ShippedParts {
  std::filesystem::path extension;            // the project's own; empty: there is none
  std::vector<tvset::RemoteKey> device_keys;  // beyond those of every set
};

// The application as the set installs it.
tvset::Application ToInstall(const app::WebApplication& loaded);

// "FUNCTION=CODE" or "FUNCTION=CODE:once", as the option --fail has it. Throws RequestError.
// Whether there is such a function is for the set to say.
tvset::Fault ParseFault(const std::string& text);

}  // namespace orvane::television
