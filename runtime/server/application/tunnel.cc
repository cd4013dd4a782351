// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/tunnel.h"

#include <sys/socket.h>

#include <utility>

namespace orvane::server {

void Tunnel::Start(asio::io_context& loop, base::UniqueFd client, tcp::socket server,
                   std::string to_client, std::string to_server) {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  if (!client || getsockname(client.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    return;  // the browser has left
  }
  const tcp protocol = address.ss_family == AF_INET6 ? tcp::v6() : tcp::v4();
  const auto tunnel =
      std::make_shared<Tunnel>(tcp::socket(loop, protocol, client.Release()), std::move(server));
  tunnel->down_.first = std::move(to_client);
  tunnel->up_.first = std::move(to_server);
  tunnel->Begin(tunnel->down_);
  tunnel->Begin(tunnel->up_);
}

void Tunnel::Begin(Way& way) {
  asio::async_write(way.to, asio::buffer(way.first),
                    [self = shared_from_this(), &way](beast::error_code error, size_t) {
                      if (error) return self->End();
                      self->Read(way);
                    });
}

void Tunnel::Read(Way& way) {
  way.from.async_read_some(asio::buffer(way.buffer), [self = shared_from_this(), &way](
                                                         beast::error_code error, size_t count) {
    if (error) return self->End();
    self->Write(way, count);
  });
}

void Tunnel::Write(Way& way, size_t count) {
  asio::async_write(way.to, asio::buffer(way.buffer.data(), count),
                    [self = shared_from_this(), &way](beast::error_code error, size_t) {
                      if (error) return self->End();
                      self->Read(way);
                    });
}

void Tunnel::End() {
  beast::error_code ignored;
  for (tcp::socket* const socket : {&client_, &server_}) {
    socket->shutdown(tcp::socket::shutdown_both, ignored);
    socket->close(ignored);
  }
}

}  // namespace orvane::server
