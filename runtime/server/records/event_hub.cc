// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/records/event_hub.h"

#include <utility>

#include "base/json_writer.h"

namespace orvane::server {

namespace {

constexpr std::chrono::milliseconds kBatch{16};

}  // namespace

void EventHub::Publish(std::string_view name, std::string_view data) {
  if (sockets_.empty()) return;
  events_.push_back({std::string(name), std::string(data), false});
  FlushSoon();
}

void EventHub::PublishItem(std::string_view name, std::string_view item) {
  if (sockets_.empty()) return;
  if (events_.empty() || !events_.back().is_open_list || events_.back().name != name) {
    events_.push_back({std::string(name), "[", true});
  }
  std::string& list = events_.back().data;
  if (list.size() > 1) list += ',';
  list += item;
  FlushSoon();
}

void EventHub::FlushSoon() {
  if (std::exchange(scheduled_, true)) return;
  timer_.expires_after(kBatch);
  timer_.async_wait([this](beast::error_code error) {
    if (!error) Flush();
  });
}

void EventHub::Flush() {
  scheduled_ = false;
  const std::string list = base::JsonArray(std::exchange(events_, {}), [](const Event& event) {
    return base::JsonWriter()
        .Text("name", event.name)
        .Raw("data", event.is_open_list ? event.data + "]" : event.data)
        .Take();
  });
  const auto text = std::make_shared<const std::string>(R"({"events":)" + list + "}");
  const auto sockets = sockets_;  // one that is too slow leaves while it is written to
  for (const auto& socket : sockets) socket->Send(text);
}

}  // namespace orvane::server
