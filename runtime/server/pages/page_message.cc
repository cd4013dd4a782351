// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_message.h"

#include <algorithm>

namespace orvane::server {

namespace {

std::string_view HeadOf(std::string_view data) { return data.substr(0, data.find('\n')); }

}  // namespace

PageMessage ReadPageMessage(std::string_view data, bool is_binary) {
  const std::string_view head = HeadOf(data);
  PageMessage message{base::ParseJson(head), std::nullopt, is_binary};
  if (!message.head.is_object()) throw base::JsonError("A message is a JSON object.");
  if (head.size() < data.size()) message.body = data.substr(head.size() + 1);
  return message;
}

std::optional<int64_t> FindMessageId(std::string_view data) {
  std::optional<int64_t> id;
  bool is_next = false;
  const auto look = [&](int depth, Json::parse_event_t event, Json& parsed) {
    if (depth == 1 && event == Json::parse_event_t::value && is_next &&
        parsed.is_number_integer()) {
      id = parsed.get<int64_t>();
    }
    is_next = depth == 1 && event == Json::parse_event_t::key && parsed == "id";
    return depth < 2;
  };
  try {
    const Json unused = Json::parse(HeadOf(data), look);
  } catch (const Json::exception&) {
    // that is known
  }
  return id;
}

SocketMessage WritePageMessage(const PageMessage& message) {
  SocketMessage written{base::JsonText(message.head), message.is_binary};
  if (message.body) (written.data += '\n') += *message.body;
  return written;
}

}  // namespace orvane::server
