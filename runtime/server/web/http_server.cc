// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/http_server.h"

#include <chrono>
#include <utility>

#include "base/net.h"
#include "server/web/http_connection.h"

namespace orvane::server {

class HttpServer::Listener : public std::enable_shared_from_this<Listener> {
 public:
  explicit Listener(HttpServer& server)
      : server_(&server), acceptor_(server.loop_), pause_(server.loop_) {}

  beast::error_code Open(const tcp::endpoint& endpoint) {
    beast::error_code error;
    acceptor_.open(endpoint.protocol(), error);
    if (!error) acceptor_.set_option(tcp::acceptor::reuse_address(true), error);
    if (!error && endpoint.address().is_v6()) {
      acceptor_.set_option(asio::ip::v6_only(true), error);
    }
    if (!error) acceptor_.bind(endpoint, error);
    if (!error) acceptor_.listen(asio::socket_base::max_listen_connections, error);
    return error;
  }

  uint16_t port() const { return acceptor_.local_endpoint().port(); }

  void Stop() {
    server_ = nullptr;
    beast::error_code ignored;
    acceptor_.close(ignored);
    pause_.cancel();
  }

  void Accept() {
    acceptor_.async_accept(
        [self = shared_from_this()](beast::error_code error, tcp::socket socket) {
          if (self->server_ == nullptr) return;
          if (error) return self->AcceptLater();
          self->Serve(std::move(socket));
          self->Accept();
        });
  }

 private:
  void Serve(tcp::socket socket) {
    const auto connections = static_cast<size_t>(server_->token_.use_count()) - 1;
    if (connections >= server_->limits_.connections) return;  // one too many is closed at once
    std::make_shared<HttpConnection>(std::move(socket), *server_->site_, server_->limits_,
                                     server_->token_)
        ->Read();
  }

  // Out of descriptors, most likely: some connection has to end first.
  void AcceptLater() {
    pause_.expires_after(std::chrono::milliseconds(100));
    pause_.async_wait([self = shared_from_this()](beast::error_code error) {
      if (!error && self->server_ != nullptr) self->Accept();
    });
  }

  HttpServer* server_;  // null once stopped
  tcp::acceptor acceptor_;
  asio::steady_timer pause_;
};

HttpServer::HttpServer(asio::io_context& loop, const Limits& limits)
    : loop_(loop), limits_(limits), token_(std::make_shared<char>()) {}

HttpServer::~HttpServer() { Stop(); }

HttpServer::Bound HttpServer::Listen(const std::string& address, uint16_t port) {
  const auto listener = std::make_shared<Listener>(*this);
  const beast::error_code error = listener->Open({asio::ip::make_address(address), port});
  if (error == asio::error::address_in_use || error == asio::error::access_denied) {
    return Bound::kPortIsTaken;
  }
  if (error) return Bound::kNoSuchAddress;
  listeners_.push_back(listener);
  port_ = listener->port();
  return Bound::kYes;
}

void HttpServer::Serve(Site& site) {
  site_ = &site;
  for (const auto& listener : listeners_) listener->Accept();
}

void HttpServer::Stop() {
  for (const auto& listener : listeners_) listener->Stop();
  listeners_.clear();
}

}  // namespace orvane::server
