// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/net.h"
#include "server/web/socket.h"

namespace orvane::server {

// Tells every open simulator what happens, in order, a few messages a second at most: what comes
// together is sent together. The loop's thread only.
class EventHub {
 public:
  explicit EventHub(asio::io_context& loop) : timer_(loop) {}

  void Add(const std::shared_ptr<Socket>& socket) { sockets_.insert(socket); }
  void Remove(const std::shared_ptr<Socket>& socket) { sockets_.erase(socket); }

  // `data` is JSON.
  void Publish(std::string_view name, std::string_view data);
  // One item of an event whose data is a list: items that come together become one list.
  void PublishItem(std::string_view name, std::string_view item);

 private:
  struct Event {
    std::string name;
    std::string data;
    bool is_open_list;
  };

  void FlushSoon();
  void Flush();

  std::set<std::shared_ptr<Socket>> sockets_;
  std::vector<Event> events_;
  asio::steady_timer timer_;
  bool scheduled_ = false;
};

}  // namespace orvane::server
