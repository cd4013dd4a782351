// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/http_post.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <sstream>

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <netdb.h>

namespace orvane::cli {

namespace http = boost::beast::http;

namespace {

constexpr size_t kLongestBody = size_t{64} << 20;

class Socket {
 public:
  explicit Socket(int descriptor) : descriptor_(descriptor) {}
  ~Socket() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  Socket(Socket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Socket& operator=(Socket&&) = delete;

  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool IsLocal(const std::string& host) {
  return host == "localhost" || host == "127.0.0.1" || host == "[::1]" ||
         EndsWith(host, ".localhost");
}

// What a resolver may not know: localhost and every name below it are this machine.
std::string NodeOf(const std::string& host) {
  if (host == "[::1]") return "::1";
  return host == "localhost" || EndsWith(host, ".localhost") ? "127.0.0.1" : host;
}

using TimePoint = std::chrono::steady_clock::time_point;

// For the next operation of the socket, whatever those before it took.
void SetDeadline(const Socket& socket, TimePoint deadline) {
  const auto left = std::chrono::ceil<std::chrono::microseconds>(
      std::max(deadline - std::chrono::steady_clock::now(), TimePoint::duration(1)));
  constexpr int64_t kMicro = 1000000;
  const timeval limit{left.count() / kMicro, left.count() % kMicro};
  setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit));
  setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof(limit));
}

Socket Connect(const LocalAddress& address, TimePoint deadline) {
  addrinfo hints = {};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const std::string node = NodeOf(address.host);
  const int error = getaddrinfo(node.c_str(), address.port.c_str(), &hints, &found);
  if (error != 0) throw HttpError(node + " is not known: " + gai_strerror(error));
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, freeaddrinfo);
  std::string why;
  for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
    Socket socket(::socket(each->ai_family, SOCK_STREAM | SOCK_CLOEXEC, each->ai_protocol));
    SetDeadline(socket, deadline);
    if (connect(socket.get(), each->ai_addr, each->ai_addrlen) == 0) return socket;
    why = std::strerror(errno);
  }
  throw HttpError("nobody answers at " + address.host + ":" + address.port + ": " + why);
}

void SendAll(const Socket& socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0)
      throw HttpError(std::string("the request was not taken: ") + std::strerror(errno));
    bytes.remove_prefix(static_cast<size_t>(count));
  }
}

// Adds what comes next to the buffer; false at the end of the stream.
bool ReceiveSome(const Socket& socket, TimePoint deadline, boost::beast::flat_buffer* buffer) {
  SetDeadline(socket, deadline);
  const auto space = buffer->prepare(size_t{64} << 10);
  ssize_t count = 0;
  do {
    count = recv(socket.get(), space.data(), space.size(), 0);
  } while (count < 0 && errno == EINTR);
  if (count < 0) {
    const bool late = errno == EAGAIN || errno == EWOULDBLOCK;
    throw HttpError(late ? "no answer came in time"
                         : std::string("the answer broke off: ") + std::strerror(errno));
  }
  buffer->commit(static_cast<size_t>(count));
  return count > 0;
}

HttpAnswer ReceiveAnswer(const Socket& socket, TimePoint deadline) {
  http::response_parser<http::string_body> parser;
  parser.body_limit(kLongestBody);
  parser.eager(true);
  boost::beast::flat_buffer buffer;
  boost::beast::error_code error;
  while (!parser.is_done()) {
    if (ReceiveSome(socket, deadline, &buffer)) {
      buffer.consume(parser.put(buffer.data(), error));
      if (error == http::error::need_more) error = {};
    } else if (!parser.got_some()) {
      throw HttpError("the connection was closed without an answer");
    } else {
      parser.put_eof(error);
      if (!error && !parser.is_done()) error = http::error::partial_message;
    }
    if (error) throw HttpError("the answer is no HTTP that could be read: " + error.message());
  }
  return {parser.get().result_int(), std::move(parser.get().body())};
}

}  // namespace

std::optional<LocalAddress> ParseLocalAddress(const std::string& url) {
  const size_t scheme = url.find("://");
  if (scheme == std::string::npos) return std::nullopt;
  const size_t begin = scheme + 3;
  const std::string authority = url.substr(begin, url.find_first_of("/?#", begin) - begin);
  const size_t colon = authority.rfind(':');
  if (colon == std::string::npos || colon + 1 == authority.size()) return std::nullopt;
  LocalAddress address{authority.substr(0, colon), authority.substr(colon + 1)};
  const bool digits = address.port.find_first_not_of("0123456789") == std::string::npos;
  if (!digits || !IsLocal(address.host)) return std::nullopt;
  return address;
}

HttpAnswer HttpPost(const LocalAddress& address, const std::string& path,
                    const std::vector<std::pair<std::string, std::string>>& headers,
                    const std::string& body, std::chrono::seconds patience) {
  http::request<http::string_body> request(http::verb::post, path, 11);
  request.set(http::field::host, address.host + ":" + address.port);
  request.set(http::field::connection, "close");
  for (const auto& [name, value] : headers) request.set(name, value);
  request.body() = body;
  request.prepare_payload();
  std::ostringstream bytes;
  bytes << request;
  const TimePoint deadline = std::chrono::steady_clock::now() + patience;
  const Socket socket = Connect(address, deadline);
  SendAll(socket, bytes.str());
  return ReceiveAnswer(socket, deadline);
}

}  // namespace orvane::cli
