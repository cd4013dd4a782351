// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/net.h"
#include "server/web/http_message.h"
#include "server/web/limits.h"
#include "server/web/socket.h"

namespace orvane::server {

class HttpConnection;

// Answers the requests of one origin. The loop's thread only.
class Site {
 public:
  Site() = default;
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;
  virtual ~Site() = default;

  // Calls one of the methods of the connection that answer, at once or later, and so keeps it.
  virtual void Handle(std::shared_ptr<HttpConnection> connection) = 0;
};

// One client's connection: reads a request, has the site answer it, and so on, until the client
// leaves, is too slow or asks for something else than HTTP. When the client is gone an answer goes
// nowhere. It keeps itself alive while something is under way; `token` lives as long as the
// connection, whatever becomes of it. The loop's thread only.
class HttpConnection final : public std::enable_shared_from_this<HttpConnection> {
 public:
  // Borrows the site.
  HttpConnection(tcp::socket socket, Site& site, const Limits& limits, std::shared_ptr<void> token);

  void Read();  // starts it

  const HttpRequest& request() const { return request_; }

  // Exactly one of these is called once for each request.
  void Respond(HttpResponse response);
  // Accepts a WebSocket upgrade. `opened` gets the socket and sets its listener.
  void AcceptSocket(std::function<void(std::shared_ptr<Socket>)> opened);
  // Gives the connection away, with the bytes that were read behind the request. HTTP ends on it.
  tcp::socket TakeConnection(std::string* unread);

 private:
  using Parser = http::request_parser<http::string_body>;

  void ReadBody(beast::error_code error);
  void OnRequest(beast::error_code error);
  void RefuseRequest(beast::error_code error);
  void WriteFilePart();
  void OnAnswered(beast::error_code error);
  void End();

  beast::tcp_stream stream_;
  Site& site_;
  const Limits limits_;
  const std::shared_ptr<void> token_;
  beast::flat_buffer buffer_;
  std::optional<Parser> parser_;
  HttpRequest request_;
  bool keep_alive_ = false;

  // The answer that is being written.
  HttpResponse response_;
  std::optional<http::response_serializer<http::string_body>> serializer_;
  std::vector<char> part_;  // of a file
};

}  // namespace orvane::server
