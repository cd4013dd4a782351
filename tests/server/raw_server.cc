// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "raw_server.h"

#include <sys/socket.h>

#include <array>
#include <cstdlib>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace orvane::server {

namespace {

// False at the end of the stream.
bool ReadMore(const base::UniqueFd& client, std::string* text) {
  std::array<char, 16384> bytes;
  const ssize_t count = recv(client.get(), bytes.data(), bytes.size(), 0);
  if (count <= 0) return false;
  text->append(bytes.data(), static_cast<size_t>(count));
  return true;
}

void SendAll(const base::UniqueFd& client, const std::string& text) {
  for (size_t sent = 0; sent < text.size();) {
    const ssize_t count = send(client.get(), text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return;
    sent += static_cast<size_t>(count);
  }
}

// The head, and as much as it announces; what came behind it goes to `unread`.
std::string ReadRequest(const base::UniqueFd& client, std::string* unread) {
  std::string text;
  size_t end = std::string::npos;
  while ((end = text.find("\r\n\r\n")) == std::string::npos) {
    if (!ReadMore(client, &text)) return text;
  }
  size_t size = end + 4;
  const size_t length = text.find("Content-Length: ");
  if (length < end) size += static_cast<size_t>(std::atoll(text.c_str() + length + 16));
  while (text.size() < size && ReadMore(client, &text)) {
  }
  *unread = text.substr(size);
  return text.substr(0, size);
}

}  // namespace

RawServer::RawServer(Answer answer) : answer_(std::move(answer)) {
  listener_ = base::UniqueFd(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_.get(), generic, size) != 0 || listen(listener_.get(), 16) != 0 ||
      getsockname(listener_.get(), generic, &size) != 0) {
    std::abort();
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Accept(); });
}

RawServer::~RawServer() {
  shutdown(listener_.get(), SHUT_RDWR);
  thread_.join();
  for (std::thread& client : clients_) client.join();
}

std::vector<std::string> RawServer::requests() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return requests_;
}

void RawServer::Accept() {
  while (true) {
    base::UniqueFd client(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!client) return;
    clients_.emplace_back([this, client = std::move(client)] { Serve(client); });
  }
}

void RawServer::Serve(const base::UniqueFd& client) {
  std::string more;
  const std::string request = ReadRequest(client, &more);
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    requests_.push_back(request);
  }
  const std::string answer = answer_(request);
  SendAll(client, answer);
  if (answer.find(" 101 ") == std::string::npos) return;
  do {
    SendAll(client, more);
    more.clear();
  } while (ReadMore(client, &more));
}

}  // namespace orvane::server
