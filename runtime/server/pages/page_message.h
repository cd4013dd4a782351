// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/json.h"
#include "server/web/socket.h"

namespace orvane::server {

// A message between a page and the server: a line of JSON, the head, and behind the line's end,
// where there is one, the body. What a page or an extension wrote travels as the body, as it is.
struct PageMessage {
  Json head;                             // an object
  std::optional<std::string_view> body;  // borrowed; text, or the bytes of a binary message
  bool is_binary = false;
};

// Throws JsonError for one whose head is no JSON object.
PageMessage ReadPageMessage(std::string_view data, bool is_binary);

// The number of a message whose head could not be read, where that stands before what is wrong.
std::optional<int64_t> FindMessageId(std::string_view data);

SocketMessage WritePageMessage(const PageMessage& message);

}  // namespace orvane::server
