// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
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

// Posts `body` and waits for the whole answer, of 64 MiB at most, for as long as `patience`. Throws
// HttpError.
HttpAnswer HttpPost(const LocalAddress& address, const std::string& path,
                    const std::vector<std::pair<std::string, std::string>>& headers,
                    const std::string& body, std::chrono::seconds patience);

}  // namespace orvane::cli
