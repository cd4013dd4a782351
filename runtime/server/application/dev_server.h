// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/net.h"
#include "server/application/dev_server_address.h"
#include "server/web/http_connection.h"
#include "server/web/origins.h"

namespace orvane::server {

// Serves an application from the development server of its author, so that what that server does
// (bundling, hot reloading over a WebSocket or an event stream) goes on working. Documents get the
// page's script; everything else passes as it is. The loop's thread only.
class DevServer {
 public:
  // A document on its way to a browser.
  struct Document {
    std::string path;
    bool is_top;          // as far as the request tells
    std::string problem;  // why the runtime will not be in it; empty when it will
  };
  struct Hooks {
    std::function<void(HttpResponse* response)> add_headers;
    std::function<void(const Document& document)> on_document;
  };

  // `url` as ParseDevServerAddress takes it; throws as that does. Borrows the loop. Alive as long
  // as the loop runs.
  DevServer(asio::io_context& loop, const std::string& url, Origins origins, Hooks hooks);

  void Handle(const std::shared_ptr<HttpConnection>& connection) const;

 private:
  class Relay;

  asio::io_context& loop_;
  const DevServerAddress address_;
  const Origin origin_;    // as the development server knows itself
  const Origins origins_;  // where browsers see the application and the television
  const Hooks hooks_;
};

}  // namespace orvane::server
