// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "posix/unique_fd.h"

namespace orvane::server {

// A server of another maker: answers each request with the bytes that a test gives, then closes the
// connection. After an answer with status 101 it sends back what it gets, instead.
class RawServer {
 public:
  using Answer = std::function<std::string(const std::string& request)>;

  explicit RawServer(Answer answer);
  ~RawServer();  // waits for the connections, whose clients have to have gone
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;

  uint16_t port() const { return port_; }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }
  std::vector<std::string> requests() const;  // heads and bodies, as they came

 private:
  void Accept();
  void Serve(const base::UniqueFd& client);

  const Answer answer_;
  base::UniqueFd listener_;
  uint16_t port_ = 0;
  mutable std::mutex mutex_;
  std::vector<std::string> requests_;  // guarded by mutex_
  std::vector<std::thread> clients_;   // of the accepting thread, until it has ended
  std::thread thread_;
};

}  // namespace orvane::server
