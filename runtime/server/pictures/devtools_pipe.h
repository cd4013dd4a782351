// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "base/json.h"
#include "base/net.h"

namespace orvane::server {

// The DevTools protocol over a socket: JSON texts with a zero byte after each. One thread at
// a time. Throws std::runtime_error, with a sentence for people, when the browser is gone, refuses,
// or takes too long.
class DevToolsPipe {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  explicit DevToolsPipe(int socket);  // takes it; the browser ends when its pipe does

  // Sends a command, to the browser or to a target's session, and waits for its result, an object.
  // Events that come in between are passed over.
  Json Call(const std::string& method, const Json& parameters, const std::string& session,
            Deadline deadline);

 private:
  template <class Start>
  size_t Await(Deadline deadline, const Start& start);
  Json Read(Deadline deadline);

  asio::io_context loop_;
  asio::local::stream_protocol::socket socket_{loop_};
  int64_t last_id_ = 0;
  std::string received_;
};

}  // namespace orvane::server
