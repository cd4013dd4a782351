// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "server/exchange.h"
#include "server/net.h"
#include "server/origin_check.h"

namespace orvane::server {

// Serves an application from the development server of its author, so that what that server does
// (bundling, hot reloading over a WebSocket or an event stream) goes on working. Documents get the
// page's script; everything else passes as it is. The loop's thread only.
class DevServer {
 public:
  using AddHeaders = std::function<void(HttpResponse* response)>;
  using Explain = std::function<void(const std::string& text)>;

  // `url` is "http://HOST:PORT", with or without a path, which is not used here. Throws RunError
  // for another form. `app` is where browsers see the application. `explain` hears of documents
  // whose own policy keeps the page's script out. Borrows the loop.
  DevServer(asio::io_context& loop, const std::string& url, Origin app, AddHeaders add_headers,
            Explain explain);

  void Handle(const std::shared_ptr<Exchange>& exchange) const;

 private:
  struct Target {
    std::string host;  // without brackets
    std::string port;
    Origin origin;  // as the development server knows itself
    Origin app;
    AddHeaders add_headers;
    Explain explain;
  };
  class Run;

  asio::io_context& loop_;
  std::shared_ptr<const Target> target_;
};

}  // namespace orvane::server
