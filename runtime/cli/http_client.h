// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::cli {

// A program on this machine that speaks HTTP.
struct LocalAddress {
  std::string host;  // as the URL has it
  std::string port;
};

// Of a URL such as "http://localhost:8631/"; empty for one that leads to another machine or has no
// port.
std::optional<LocalAddress> ParseLocalAddress(const std::string& url);

struct HttpAnswer {
  unsigned status = 0;
  std::string body;
};

// Nobody answered, or not in time, or not in HTTP; what() says which.
class HttpError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Nobody listens at the address.
class NobodyListens : public HttpError {
 public:
  using HttpError::HttpError;
};

// Posts `body` and waits for the whole answer, of 64 MiB at most, for as long as `patience` in all.
// Throws HttpError.
HttpAnswer HttpPost(const LocalAddress& address, const std::string& path,
                    const std::vector<std::pair<std::string, std::string>>& headers,
                    const std::string& body, std::chrono::milliseconds patience);

// A WebSocket on which the other side tells what happens. One thread.
class MessageStream {
 public:
  // Opens it within `patience`. A side that is silent for as long is asked whether it is there, and
  // given up when it does not answer. Throws HttpError.
  MessageStream(const LocalAddress& address, const std::string& target,
                std::chrono::milliseconds patience);
  ~MessageStream();
  MessageStream(const MessageStream&) = delete;
  MessageStream& operator=(const MessageStream&) = delete;

  // Waits for the next message; nothing when the other side has closed or is gone. It is valid
  // until the next call.
  std::optional<std::string_view> Next();

 private:
  struct Connection;
  const std::unique_ptr<Connection> connection_;
};

}  // namespace orvane::cli
