// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/web_application.h"
#include "server/pages/key_presses.h"
#include "server/pages/page_script.h"
#include "server/web/limits.h"

namespace orvane::server {

// Where a running server is found.
struct RunAddresses {
  std::string simulator;  // with the run's secret: the link for a person
  std::string app;
};

struct RunOptions {
  app::WebApplication app;
  std::string version;                           // of this runtime, for people
  std::vector<std::string> set_process_command;  // starts the set process; its socket is fd 3
  std::filesystem::path state_folder;
  std::string profile;  // empty: the set's default
  std::vector<std::string> faults;
  std::vector<std::string> extensions;
  std::string dev_server;        // "http://localhost:5173", served in place of the folder; or empty
  std::optional<uint16_t> port;  // the application's; 0: any. Without it: a usual one that is free
  std::chrono::milliseconds deadline{10000};
  std::chrono::milliseconds patience{20000};
  bool watch = true;
  // Pages are cross-origin isolated: synchronous calls are quick, frames of other sites are not
  // shown.
  bool isolate = true;
  bool open_browser = false;
  bool headless_browser = false;
  bool test_hooks = false;
  Limits limits;
  std::chrono::milliseconds context_grace{5000};
  KeyTimes key_times;
  ScriptCheck check_script;  // may be empty

  // Called once on the loop's thread, when the link works.
  std::function<void(const RunAddresses&)> on_ready;
};

}  // namespace orvane::server
