// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "raw_client.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace orvane::server {

namespace {

constexpr int kLongestWaitMs = 30000;
constexpr int kRefusalMs = 1000;

uint64_t BigEndian(const std::string& bytes, size_t at, size_t count) {
  uint64_t value = 0;
  for (size_t i = 0; i < count; ++i) value = value << 8U | static_cast<uint8_t>(bytes[at + i]);
  return value;
}

}  // namespace

RawClient::RawClient(uint16_t port, const std::string& address) {
  const bool is_v6 = address.find(':') != std::string::npos;
  socket_ = base::UniqueFd(socket(is_v6 ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in6 v6{};
  sockaddr_in v4{};
  v6.sin6_family = AF_INET6;
  v4.sin_family = AF_INET;
  v6.sin6_port = v4.sin_port = htons(port);
  inet_pton(AF_INET6, address.c_str(), &v6.sin6_addr);
  inet_pton(AF_INET, address.c_str(), &v4.sin_addr);
  const auto* const target =
      is_v6 ? reinterpret_cast<sockaddr*>(&v6) : reinterpret_cast<sockaddr*>(&v4);
  if (connect(socket_.get(), target, is_v6 ? sizeof v6 : sizeof v4) != 0) socket_.Reset();
}

void RawClient::Send(const std::string& bytes) {
  size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count =
        send(socket_.get(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return;  // the server has closed; the answer tells
    sent += static_cast<size_t>(count);
  }
}

bool RawClient::Fill() {
  pollfd wait{socket_.get(), POLLIN, 0};
  if (poll(&wait, 1, kLongestWaitMs) <= 0) return false;
  std::array<char, 65536> bytes;
  const ssize_t count = recv(socket_.get(), bytes.data(), bytes.size(), 0);
  if (count <= 0) return false;
  buffer_.append(bytes.data(), static_cast<size_t>(count));
  return true;
}

bool RawClient::Need(size_t bytes) {
  while (buffer_.size() < bytes) {
    if (!Fill()) return false;
  }
  return true;
}

RawResponse RawClient::Receive() {
  RawResponse response;
  while (buffer_.find("\r\n\r\n") == std::string::npos) {
    if (!Fill()) return response;
  }
  const size_t end = buffer_.find("\r\n\r\n") + 4;
  response.head = buffer_.substr(0, end);
  buffer_.erase(0, end);
  response.status = std::atoi(response.head.c_str() + 9);
  const size_t length = response.head.find("Content-Length: ");
  if (length == std::string::npos) return response;
  const auto size = static_cast<size_t>(std::atoll(response.head.c_str() + length + 16));
  if (!Need(size)) return response;
  response.body = buffer_.substr(0, size);
  buffer_.erase(0, size);
  return response;
}

RawResponse RawClient::Request(const std::string& method, const std::string& target,
                               const Headers& headers, const std::string& body) {
  std::string text = method + " " + target + " HTTP/1.1\r\n";
  for (const auto& [name, value] : headers) text += name + ": " + value + "\r\n";
  if (!body.empty()) text += "Content-Length: " + std::to_string(body.size()) + "\r\n";
  Send(text + "\r\n" + body);
  return Receive();
}

bool RawClient::ReceivesBytes(const std::string& bytes) {
  if (!Need(bytes.size()) || buffer_.compare(0, bytes.size(), bytes) != 0) return false;
  buffer_.erase(0, bytes.size());
  return true;
}

bool RawClient::Echoes(const std::string& bytes) {
  Send(bytes);
  return ReceivesBytes(bytes);
}

int RawClient::Upgrade(const std::string& target, const Headers& headers) {
  Headers all = headers;
  all.insert(all.end(), {{"Connection", "Upgrade"},
                         {"Upgrade", "websocket"},
                         {"Sec-WebSocket-Version", "13"},
                         {"Sec-WebSocket-Key", "dGhlIHNhbXBsZSBub25jZQ=="}});
  return Request("GET", target, all).status;
}

std::string RawClient::TextFrame(const std::string& text) {
  std::string frame = "\x81";
  if (text.size() < 126) {
    frame.push_back(static_cast<char>(0x80U | text.size()));
  } else {
    const bool is_short = text.size() < 65536;
    frame.push_back(static_cast<char>(is_short ? 0xfe : 0xff));
    for (int shift = is_short ? 8 : 56; shift >= 0; shift -= 8) {
      frame.push_back(static_cast<char>(text.size() >> static_cast<unsigned>(shift) & 0xffU));
    }
  }
  return frame + std::string(4, '\0') + text;  // a mask that changes nothing
}

void RawClient::SendText(const std::string& text) { Send(TextFrame(text)); }

bool RawClient::TrySendText(const std::string& text) {
  const std::string frame = TextFrame(text);
  for (size_t sent = 0; sent < frame.size();) {
    pollfd wait{socket_.get(), POLLOUT, 0};
    if (poll(&wait, 1, kRefusalMs) <= 0) return false;
    const ssize_t count =
        send(socket_.get(), frame.data() + sent, frame.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count < 0 && errno != EAGAIN) return false;
    if (count > 0) sent += static_cast<size_t>(count);
  }
  return true;
}

std::optional<std::string> RawClient::ReceiveText() {
  if (!Need(2)) return std::nullopt;
  const int kind = static_cast<uint8_t>(buffer_[0]) & 0xf;
  uint64_t size = static_cast<uint8_t>(buffer_[1]) & 0x7fU;
  size_t head = 2;
  if (size >= 126) {
    const size_t digits = size == 126 ? 2 : 8;
    if (!Need(head + digits)) return std::nullopt;
    size = BigEndian(buffer_, head, digits);
    head += digits;
  }
  if (!Need(head + size)) return std::nullopt;
  std::string text = buffer_.substr(head, size);
  buffer_.erase(0, head + size);
  if (kind == 1) return text;
  if (kind == 8 && text.size() >= 2) close_code_ = static_cast<int>(BigEndian(text, 0, 2));
  return kind == 8 ? std::nullopt : ReceiveText();
}

}  // namespace orvane::server
