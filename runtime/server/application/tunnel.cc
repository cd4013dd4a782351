// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/tunnel.h"

namespace orvane::server {

void Tunnel::Start(tcp::socket client, tcp::socket server, std::string to_client,
                   std::string to_server) {
  const auto tunnel = std::make_shared<Tunnel>(std::move(client), std::move(server));
  tunnel->down_.buffer = std::move(to_client);
  tunnel->up_.buffer = std::move(to_server);
  tunnel->Write(tunnel->down_, tunnel->down_.buffer.size());
  tunnel->Write(tunnel->up_, tunnel->up_.buffer.size());
}

void Tunnel::Read(Direction& way) {
  constexpr size_t kPartBytes = 16384;
  way.buffer.resize(kPartBytes);
  way.from.async_read_some(asio::buffer(way.buffer), [self = shared_from_this(), &way](
                                                         beast::error_code error, size_t count) {
    if (error) return self->End();
    self->Write(way, count);
  });
}

void Tunnel::Write(Direction& way, size_t count) {
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
