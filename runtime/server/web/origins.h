// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "server/web/http_server.h"
#include "server/web/origin_check.h"

namespace orvane::server {

struct Origins {
  // Two sites for a browser, by their names: a page that blocks does not hold up the simulator,
  // because it has a process of its own, and neither has the other's cookies.
  Origin app;        // 127.0.0.1
  Origin simulator;  // localhost
};

// Listens for both. `port` is the application's; without one it is a usual one, which stays the
// same from run to run (the application's local storage belongs to it) unless it is taken; the
// simulator is at the next free one. Throws std::runtime_error.
Origins ListenOnLoopback(HttpServer& app, HttpServer& simulator, std::optional<uint16_t> port);

}  // namespace orvane::server
