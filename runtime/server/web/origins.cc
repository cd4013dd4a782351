// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/origins.h"

#include <string>

namespace orvane::server {

namespace {

constexpr uint16_t kUsualPort = 8630;
constexpr int kTries = 100;
constexpr char kIpv4[] = "127.0.0.1";
constexpr char kIpv6[] = "::1";

// `host` may mean either address to a browser, so that the port has to be free on both.
bool ListenOnBoth(HttpServer& server, uint16_t port) {
  if (server.Listen(kIpv4, port) != HttpServer::Bound::kYes) return false;
  if (server.Listen(kIpv6, server.port()) != HttpServer::Bound::kPortIsTaken) return true;
  server.Stop();
  return false;
}

uint16_t NextPort(uint16_t port) { return port == 0 || port == 0xffff ? 0 : port + 1; }

Origin OriginAt(const char* host, const HttpServer& server) {
  return {std::string(host) + ":" + std::to_string(server.port())};
}

}  // namespace

Origins ListenOnLoopback(HttpServer& app, HttpServer& simulator, std::optional<uint16_t> port) {
  uint16_t app_port = port.value_or(kUsualPort);
  int tries = port ? 1 : kTries;
  while (app.Listen(kIpv4, app_port) != HttpServer::Bound::kYes) {
    if (--tries == 0) {
      throw std::runtime_error("port " + std::to_string(app_port) +
                               " is taken or may not be used; choose another one with --port.");
    }
    app_port = NextPort(app_port);
  }
  // Where any port will do, any other will do too.
  uint16_t simulator_port = port == 0 ? 0 : NextPort(app.port());
  for (tries = kTries; !ListenOnBoth(simulator, simulator_port); --tries) {
    if (tries == 0)
      throw std::runtime_error("no port is free for the simulator; end another program.");
    simulator_port = NextPort(simulator_port);
  }
  return {OriginAt(kIpv4, app), OriginAt("localhost", simulator)};
}

}  // namespace orvane::server
