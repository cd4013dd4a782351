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

// What is to be started: made by the command line for a page of its own, or by the server for the
// set process. Its JSON is the "options" of the server's request to start, so that the two
// processes of `orvane run` agree on it; the names there are in MapFields. Plain data, copied
// freely.
struct TelevisionOptions {
  // Where settings and the applications' data are; empty: the set's default.
  std::string state_folder;
  // The name of a shipped profile, or a file; empty: the set's default.
  std::string profile;
  // Installed, launched and in front from the start. It is installed as it stands here: whether its
  // folder has a config.xml, and what it says, was for the caller to read.
  tvset::Application app;
  // Its process as the set tells it to the platform's functions; 0: this one.
  pid_t pid = 0;
  // As ParseFault takes them. Not used when a snapshot says what fails.
  std::vector<std::string> faults;
  // Libraries, or folders of them, loaded in this order before the program's own.
  std::vector<std::string> extensions;
  // How long a page waits for the reply to a synchronous message, in milliseconds, before it gets
  // an error; a day at most.
  int64_t deadline_ms = 10000;
  // The control methods debug.log and debug.crash are there.
  bool test_hooks = false;
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

// What comes with the program that runs the television, as against what its user asks for.
struct ShippedParts {
  // The project's own library; empty: there is none where it belongs.
  std::filesystem::path extension;
  // Of the remote controls of particular devices, beyond those of every set.
  std::vector<tvset::RemoteKey> device_keys;
};

// The application as the set installs it. What the set has no use for, such as its start file, is
// left behind.
tvset::Application ToInstall(const app::WebApplication& loaded);

// "FUNCTION=CODE" or "FUNCTION=CODE:once", as the option --fail has it. The code is a decimal
// number of an int. Throws RequestError, which shows the form. Whether there is such a function,
// and whether the code is an error, is for the set to say.
tvset::Fault ParseFault(const std::string& text);

}  // namespace orvane::television
