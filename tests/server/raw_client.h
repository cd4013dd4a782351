// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "posix/unique_fd.h"

namespace orvane::server {

struct RawResponse {
  int status = 0;  // 0: the server closed the connection without an answer
  std::string head;
  std::string body;

  bool Has(const std::string& text) const { return head.find(text) != std::string::npos; }
};

// A client that sends what a browser never would. Every wait has a bound; when it is over the
// answer counts as none.
class RawClient {
 public:
  using Headers = std::vector<std::pair<std::string, std::string>>;

  explicit RawClient(uint16_t port, const std::string& address = "127.0.0.1");

  bool is_connected() const { return static_cast<bool>(socket_); }
  void Send(const std::string& bytes);
  RawResponse Receive();
  RawResponse Request(const std::string& method, const std::string& target, const Headers& headers,
                      const std::string& body = "");

  // Whether these bytes come next, and nothing else before them.
  bool ReceivesBytes(const std::string& bytes);
  // Sends bytes and waits for the same to come back.
  bool Echoes(const std::string& bytes);

  // Asks for a WebSocket; the status is 101 when there is one.
  int Upgrade(const std::string& target, const Headers& headers);
  void SendText(const std::string& text);
  // The same; false when the server does not take it for a while.
  bool TrySendText(const std::string& text);
  // The next text message; nothing when the socket was closed, whose code is then in close_code().
  std::optional<std::string> ReceiveText();
  int close_code() const { return close_code_; }
  // Without a farewell, as a browser that was killed.
  void Drop() { socket_.Reset(); }

 private:
  static std::string TextFrame(const std::string& text);
  bool Fill();  // false: the end of the stream, or too long a wait
  bool Need(size_t bytes);

  base::UniqueFd socket_;
  std::string buffer_;
  int close_code_ = 0;
};

}  // namespace orvane::server
