// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace orvane::server {

// What one message of a WebSocket holds.
struct SocketMessage {
  std::string data;
  bool is_binary = false;  // else it is text
};

// Learns what happens on a WebSocket. The loop's thread only.
class SocketListener {
 public:
  virtual ~SocketListener() = default;
  virtual void OnSocketMessage(std::string_view data, bool is_binary) = 0;
  // Whether the next message may come. While it may not, it stays with the client, and the question
  // is asked again a moment later.
  virtual bool MayReceive() const { return true; }
  virtual void OnSocketClosed() = 0;  // once; nothing comes after it
};

// A WebSocket. Kept alive by its connection, so that an owner may let go of it at
// any time. The loop's thread only.
class Socket {
 public:
  Socket() = default;
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  virtual ~Socket() = default;

  // Borrowed; null: nobody listens any more.
  virtual void set_listener(SocketListener* listener) = 0;
  // Messages leave in the order of the calls. Nothing happens on a closed socket.
  virtual void Send(std::shared_ptr<const SocketMessage> message) = 0;
  void SendText(std::string text) {
    Send(std::make_shared<const SocketMessage>(SocketMessage{std::move(text), false}));
  }
  virtual size_t queued_bytes() const = 0;  // given to Send, not written yet
  // Sends what is queued, then closes with a code as WebSockets have them. The listener is not
  // told.
  virtual void Close(uint16_t code, const std::string& reason) = 0;
};

}  // namespace orvane::server
