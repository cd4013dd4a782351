// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "app/web_application.h"
#include "server/pages/key_presses.h"
#include "server/pages/page_script.h"
#include "server/web/limits.h"
#include "television/television_options.h"

namespace orvane::server {

// Where a running server is found, and by which secret it knows its own.
struct RunAddresses {
  std::string simulator;  // with the secret: the link for a person
  std::string api;        // where methods are posted
  std::string secret;
  std::string app;
  pid_t pid = 0;
};
template <class Map>
void MapFields(Map& map, RunAddresses& addresses) {
  map.Optional("url", addresses.simulator);
  map("api", addresses.api);
  map("token", addresses.secret);
  map.Optional("appUrl", addresses.app);
  map("pid", addresses.pid, base::Range{1, std::numeric_limits<pid_t>::max()});
}

struct RunOptions {
  app::WebApplication app;
  television::TelevisionOptions set;             // with `app` on it, and `deadline`
  std::string version;                           // of this runtime, for people
  std::vector<std::string> set_process_command;  // starts the set process; its socket is fd 3
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
  Limits limits;
  PageContext::Times page_times;
  KeyTimes key_times;
  ScriptCheck check_script;  // may be empty

  // Called once on the loop's thread, when the link works.
  std::function<void(const RunAddresses&)> on_ready;
};

}  // namespace orvane::server
