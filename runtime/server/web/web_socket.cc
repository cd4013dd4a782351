// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/web_socket.h"

#include <string_view>
#include <utility>

namespace orvane::server {

namespace {

constexpr std::chrono::seconds kHandshakeTime{10};
constexpr std::chrono::milliseconds kPause{5};
constexpr std::chrono::seconds kSilence{60};  // then a ping is sent, then the connection is over

}  // namespace

WebSocket::WebSocket(beast::tcp_stream stream, const Limits& limits, std::shared_ptr<void> token)
    : stream_(std::move(stream)),
      limits_(limits),
      token_(std::move(token)),
      pause_(stream_.get_executor()) {
  stream_.next_layer().expires_never();
  websocket::stream_base::timeout timeout{};
  timeout.handshake_timeout = kHandshakeTime;
  timeout.idle_timeout = kSilence;
  timeout.keep_alive_pings = true;
  stream_.set_option(timeout);
  stream_.read_message_max(limits_.message_bytes);
  stream_.auto_fragment(false);
}

void WebSocket::Accept(const http::request<http::string_body>& upgrade,
                       std::function<void(std::shared_ptr<Socket>)> opened) {
  stream_.async_accept(
      upgrade, [self = shared_from_this(), opened = std::move(opened)](beast::error_code error) {
        if (error) return self->Drop();
        opened(self);
        self->Read();
      });
}

void WebSocket::Send(std::shared_ptr<const SocketMessage> message) {
  if (state_ != SocketState::kOpen) return;
  queued_bytes_ += message->data.size();
  queue_.push_back(std::move(message));
  if (queued_bytes_ > limits_.queued_bytes && queue_.size() > 1) return Drop();
  if (queue_.size() == 1) Write();
}

void WebSocket::Close(uint16_t code, const std::string& reason) {
  if (state_ != SocketState::kOpen) return;
  state_ = SocketState::kClosing;
  listener_ = nullptr;
  close_reason_ = websocket::close_reason(static_cast<websocket::close_code>(code), reason);
  if (queue_.empty()) StartClosing();
}

void WebSocket::StartClosing() {
  stream_.async_close(close_reason_,
                      [self = shared_from_this()](beast::error_code) { self->Drop(); });
}

void WebSocket::Read() {
  stream_.async_read(buffer_, [self = shared_from_this()](beast::error_code error, size_t) {
    self->OnRead(error);
  });
}

void WebSocket::OnRead(beast::error_code error) {
  if (state_ == SocketState::kClosed) return;
  if (error) return state_ == SocketState::kClosing ? void() : Drop();
  const auto bytes = buffer_.cdata();
  if (listener_ != nullptr) {
    listener_->OnSocketMessage({static_cast<const char*>(bytes.data()), bytes.size()},
                               stream_.got_binary());
  }
  buffer_.consume(buffer_.size());
  ReadWhenWanted();
}

void WebSocket::ReadWhenWanted() {
  if (state_ != SocketState::kOpen) return;
  if (listener_ == nullptr || listener_->MayReceive()) return Read();
  pause_.expires_after(kPause);
  pause_.async_wait([self = shared_from_this()](beast::error_code) { self->ReadWhenWanted(); });
}

void WebSocket::Write() {
  stream_.binary(queue_.front()->is_binary);
  stream_.async_write(
      asio::buffer(queue_.front()->data),
      [self = shared_from_this()](beast::error_code error, size_t) { self->OnWritten(error); });
}

void WebSocket::OnWritten(beast::error_code error) {
  if (state_ == SocketState::kClosed) return;
  if (error) return Drop();
  queued_bytes_ -= queue_.front()->data.size();
  queue_.pop_front();
  if (!queue_.empty()) return Write();
  if (state_ == SocketState::kClosing) StartClosing();
}

void WebSocket::Drop() {
  if (state_ == SocketState::kClosed) return;
  state_ = SocketState::kClosed;
  beast::error_code ignored;
  stream_.next_layer().socket().close(ignored);
  if (SocketListener* const listener = std::exchange(listener_, nullptr)) {
    listener->OnSocketClosed();
  }
}

}  // namespace orvane::server
