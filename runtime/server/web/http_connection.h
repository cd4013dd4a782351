// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/net.h"
#include "server/web/exchange.h"
#include "server/web/limits.h"

namespace orvane::server {

// One client's connection: reads a request, has the site answer it, and so on, until the client
// leaves, is too slow or asks for something else than HTTP. It keeps itself alive while something
// is under way; `token` lives as long as the connection, whatever becomes of it.
class HttpConnection final : public Exchange, public std::enable_shared_from_this<HttpConnection> {
 public:
  HttpConnection(tcp::socket socket, Site& site, const Limits& limits, std::shared_ptr<void> token);

  void Read();  // starts it

  const HttpRequest& request() const override { return request_; }
  void Respond(HttpResponse response) override;
  void AcceptSocket(std::function<void(std::shared_ptr<Socket>)> opened) override;
  base::UniqueFd TakeConnection(std::string* unread) override;

 private:
  using Parser = http::request_parser<http::string_body>;

  void ReadBody(beast::error_code error);
  void OnRequest(beast::error_code error);
  void RefuseRequest(beast::error_code error);
  void TakeRequest();
  void WriteHead();
  void OnHeadWritten(beast::error_code error);
  void WriteBody();
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
  http::response<http::empty_body> head_;
  std::optional<http::response_serializer<http::empty_body>> serializer_;
  std::vector<char> part_;  // of a file
};

}  // namespace orvane::server
