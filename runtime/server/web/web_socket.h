// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "base/net.h"
#include "server/web/limits.h"
#include "server/web/socket.h"

namespace orvane::server {

// A WebSocket on a connection that asked for one. It keeps itself alive while the connection is
// open; `token` lives as long as it does. A client that sends too long a message, or does not read
// what it is sent, is disconnected.
class WebSocket final : public Socket, public std::enable_shared_from_this<WebSocket> {
 public:
  WebSocket(beast::tcp_stream stream, const Limits& limits, std::shared_ptr<void> token);

  void Accept(const http::request<http::string_body>& upgrade,
              std::function<void(std::shared_ptr<Socket>)> opened);

  void set_listener(SocketListener* listener) override { listener_ = listener; }
  void Send(std::shared_ptr<const SocketMessage> message) override;
  size_t queued_bytes() const override { return queued_bytes_; }
  void Close(uint16_t code, const std::string& reason) override;

 private:
  enum class SocketState { kOpen, kClosing, kClosed };

  void Read();
  void ReadWhenWanted();
  void OnRead(beast::error_code error);
  void Write();
  void OnWritten(beast::error_code error);
  void StartClosing();
  void Drop();  // the connection is over

  websocket::stream<beast::tcp_stream> stream_;
  const Limits limits_;
  const std::shared_ptr<void> token_;
  SocketListener* listener_ = nullptr;
  beast::flat_buffer buffer_;
  asio::steady_timer pause_;                                // before the listener is asked again
  std::deque<std::shared_ptr<const SocketMessage>> queue_;  // the first is being written
  size_t queued_bytes_ = 0;
  SocketState state_ = SocketState::kOpen;
  websocket::close_reason close_reason_;
};

}  // namespace orvane::server
