// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/records/event_broadcast.h"

#include <utility>

#include "server/records/record_ring.h"

namespace orvane::server {

namespace {

constexpr std::chrono::milliseconds kBatch{16};

}  // namespace

void EventBroadcast::Publish(const std::string& name, const Json& data) {
  if (!sockets_.empty()) PublishText(name, base::JsonText(data));
}

void EventBroadcast::PublishText(const std::string& name, const std::string& data) {
  if (sockets_.empty()) return;
  events_.push_back({name, {data}, false});
  FlushSoon();
}

void EventBroadcast::PublishItem(const std::string& name, const std::string& item) {
  if (sockets_.empty()) return;
  if (events_.empty() || !events_.back().is_list || events_.back().name != name) {
    events_.push_back({name, {}, true});
  }
  events_.back().data.push_back(item);
  FlushSoon();
}

void EventBroadcast::FlushSoon() {
  if (std::exchange(scheduled_, true)) return;
  timer_.expires_after(kBatch);
  timer_.async_wait([this](beast::error_code error) {
    if (!error) Flush();
  });
}

void EventBroadcast::Flush() {
  scheduled_ = false;
  std::vector<std::string> texts;
  for (const QueuedEvent& event : std::exchange(events_, {})) {
    const std::string data = event.is_list ? JoinToArray(event.data) : event.data.front();
    texts.push_back("{\"name\":" + base::JsonText(event.name) + ",\"data\":" + data + "}");
  }
  const auto message = std::make_shared<const SocketMessage>(
      SocketMessage{"{\"events\":" + JoinToArray(texts) + "}", false});
  const auto sockets = sockets_;  // one that is too slow leaves while it is written to
  for (const auto& socket : sockets) socket->Send(message);
}

}  // namespace orvane::server
