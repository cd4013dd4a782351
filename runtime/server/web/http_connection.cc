// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/http_connection.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "server/web/web_socket.h"

namespace orvane::server {

namespace {

constexpr size_t kPartBytes = size_t{256} << 10U;

}  // namespace

HttpConnection::HttpConnection(tcp::socket socket, Site& site, const Limits& limits,
                               std::shared_ptr<void> token)
    : stream_(std::move(socket)), site_(site), limits_(limits), token_(std::move(token)) {
  beast::error_code ignored;
  stream_.socket().set_option(tcp::no_delay(true), ignored);
}

void HttpConnection::Read() {
  parser_.emplace();
  parser_->header_limit(limits_.header_bytes);
  parser_->body_limit(limits_.body_bytes);
  stream_.expires_after(keep_alive_ ? limits_.idle_time : limits_.request_time);
  http::async_read_header(
      stream_, buffer_, *parser_,
      [self = shared_from_this()](beast::error_code error, size_t) { self->ReadBody(error); });
}

void HttpConnection::ReadBody(beast::error_code error) {
  if (error || parser_->is_done()) return OnRequest(error);
  stream_.expires_after(limits_.request_time);
  http::async_read(stream_, buffer_, *parser_,
                   [self = shared_from_this()](beast::error_code read_error, size_t) {
                     self->OnRequest(read_error);
                   });
}

void HttpConnection::OnRequest(beast::error_code error) {
  if (error) return RefuseRequest(error);
  stream_.expires_never();
  keep_alive_ = parser_->keep_alive();
  request_ = {parser_->release(), ""};
  request_.path = DecodePath(View(request_.target())).value_or("");
  if (request_.path.empty()) {
    return Respond(TextResponse(400, "The path of this request is not one of a file."));
  }
  site_.Handle(shared_from_this());
}

// A client that left or was too slow gets nothing; one that says too much is told so.
void HttpConnection::RefuseRequest(beast::error_code error) {
  keep_alive_ = false;
  if (error == http::error::header_limit) {
    return Respond(TextResponse(431, "The request's headers are too long."));
  }
  if (error == http::error::body_limit) {
    return Respond(TextResponse(413, "The request's body is too long."));
  }
  if (error.category() == http::make_error_code(http::error::bad_method).category() &&
      error != http::error::end_of_stream && error != http::error::partial_message) {
    return Respond(TextResponse(400, "This is no HTTP request."));
  }
  End();
}

void HttpConnection::Respond(HttpResponse response) {
  response_ = std::move(response);
  const bool has_length = response_.result() != http::status::not_modified &&
                          response_.result() != http::status::no_content;
  if (has_length) {
    response_.content_length(response_.file ? response_.file->length : response_.body().size());
  }
  response_.keep_alive(keep_alive_);
  serializer_.emplace(response_);
  stream_.expires_after(limits_.write_time);
  const bool is_head = request_.method() == http::verb::head;
  if (!is_head && !response_.file) {
    http::async_write(
        stream_, *serializer_,
        [self = shared_from_this()](beast::error_code error, size_t) { self->OnAnswered(error); });
    return;
  }
  http::async_write_header(stream_, *serializer_,
                           [self = shared_from_this(), is_head](beast::error_code error, size_t) {
                             if (error || is_head) return self->OnAnswered(error);
                             self->WriteFilePart();
                           });
}

void HttpConnection::WriteFilePart() {
  FileSlice& file = *response_.file;
  if (file.length == 0) return OnAnswered({});
  part_.resize(static_cast<size_t>(std::min<uint64_t>(file.length, kPartBytes)));
  const ssize_t count =
      pread(file.file.get(), part_.data(), part_.size(), static_cast<off_t>(file.offset));
  // The file became shorter: the length that was promised cannot be kept.
  if (count <= 0) return End();
  file.offset += static_cast<uint64_t>(count);
  file.length -= static_cast<uint64_t>(count);
  stream_.expires_after(limits_.write_time);
  asio::async_write(stream_, asio::buffer(part_.data(), static_cast<size_t>(count)),
                    [self = shared_from_this()](beast::error_code error, size_t) {
                      if (error) return self->End();
                      self->WriteFilePart();
                    });
}

void HttpConnection::OnAnswered(beast::error_code error) {
  response_ = {};
  if (error || !keep_alive_) return End();
  Read();
}

void HttpConnection::AcceptSocket(std::function<void(std::shared_ptr<Socket>)> opened) {
  std::make_shared<WebSocket>(std::move(stream_), limits_, token_)
      ->Accept(request_, std::move(opened));
}

tcp::socket HttpConnection::TakeConnection(std::string* unread) {
  stream_.expires_never();
  *unread = beast::buffers_to_string(buffer_.cdata());
  return stream_.release_socket();
}

void HttpConnection::End() {
  beast::error_code ignored;
  stream_.socket().shutdown(tcp::socket::shutdown_both, ignored);
  stream_.socket().close(ignored);
}

}  // namespace orvane::server
