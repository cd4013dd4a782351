// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "base/net.h"

namespace orvane::server {

// Carries bytes between a browser and another server, both ways, until either of them ends. It
// keeps itself alive for that time, and holds back the one for whom the other is too slow.
class Tunnel : public std::enable_shared_from_this<Tunnel> {
 public:
  // `to_client` and `to_server` go first.
  static void Start(tcp::socket client, tcp::socket server, std::string to_client,
                    std::string to_server);

  Tunnel(tcp::socket client, tcp::socket server)
      : client_(std::move(client)), server_(std::move(server)) {}

 private:
  struct Direction {
    tcp::socket& from;
    tcp::socket& to;
    std::string buffer;
  };

  void Read(Direction& way);
  void Write(Direction& way, size_t count);
  void End();

  tcp::socket client_;
  tcp::socket server_;
  Direction down_{server_, client_, ""};
  Direction up_{client_, server_, ""};
};

}  // namespace orvane::server
