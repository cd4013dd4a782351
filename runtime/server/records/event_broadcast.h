// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/json.h"
#include "base/net.h"
#include "server/web/socket.h"

namespace orvane::server {

// Tells every open simulator what happens, in order, a few messages a second at most: what comes
// together is sent together. The loop's thread only.
class EventBroadcast {
 public:
  explicit EventBroadcast(asio::io_context& loop) : timer_(loop) {}

  void Add(const std::shared_ptr<Socket>& socket) { sockets_.insert(socket); }
  void Remove(const std::shared_ptr<Socket>& socket) { sockets_.erase(socket); }

  void Publish(const std::string& name, const Json& data);
  // The same for data whose text is there already.
  void PublishText(const std::string& name, const std::string& data);
  // One item of an event whose data is a list: items that come together become one list.
  void PublishItem(const std::string& name, const std::string& item);

 private:
  struct QueuedEvent {
    std::string name;
    std::vector<std::string> data;  // texts of JSON
    bool is_list;
  };

  void FlushSoon();
  void Flush();

  std::set<std::shared_ptr<Socket>> sockets_;
  std::vector<QueuedEvent> events_;
  asio::steady_timer timer_;
  bool scheduled_ = false;
};

}  // namespace orvane::server
