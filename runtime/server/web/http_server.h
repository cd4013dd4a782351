// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "server/web/http_connection.h"
#include "server/web/limits.h"

namespace boost::asio {
class io_context;
}

namespace orvane::server {

// Listens on loopback addresses and hands each request to a site. The loop's thread only.
class HttpServer {
 public:
  enum class Bound { kYes, kPortIsTaken, kNoSuchAddress };

  HttpServer(boost::asio::io_context& loop, const Limits& limits);  // borrows the loop
  ~HttpServer();  // stops listening; connections end with the loop
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  // `address` is "127.0.0.1" or "::1". Port 0 stands for any; port() is it then.
  Bound Listen(const std::string& address, uint16_t port);
  uint16_t port() const { return port_; }  // of the last successful Listen
  // Serves those who connect, from now on. Borrows the site.
  void Serve(Site& site);
  void Stop();  // listens no more

 private:
  class Listener;

  boost::asio::io_context& loop_;
  Site* site_ = nullptr;
  uint16_t port_ = 0;
  const Limits limits_;
  // Every connection holds a copy, so that its use count tells how many there are.
  const std::shared_ptr<void> token_;
  std::vector<std::shared_ptr<Listener>> listeners_;
};

}  // namespace orvane::server
