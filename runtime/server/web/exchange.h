// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "posix/unique_fd.h"
#include "server/web/http_message.h"
#include "server/web/socket.h"

namespace orvane::server {

// One HTTP request and the way to answer it: exactly one of the methods below is called once, at
// once or later. It keeps its connection; when the client is gone the answer goes nowhere. The
// loop's thread only.
class Exchange {
 public:
  Exchange() = default;
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;
  virtual ~Exchange() = default;

  virtual const HttpRequest& request() const = 0;

  virtual void Respond(HttpResponse response) = 0;

  // Accepts a WebSocket upgrade. `opened` gets the socket and sets its listener.
  virtual void AcceptSocket(std::function<void(std::shared_ptr<Socket>)> opened) = 0;

  // Gives the connection away, with the bytes that were read behind the request. HTTP ends on it.
  virtual base::UniqueFd TakeConnection(std::string* unread) = 0;
};

// Answers the requests of one origin.
class Site {
 public:
  Site() = default;
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;
  virtual ~Site() = default;

  virtual void Handle(std::shared_ptr<Exchange> exchange) = 0;
};

}  // namespace orvane::server
