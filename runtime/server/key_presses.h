// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "server/json_object.h"
#include "server/library.h"
#include "server/net.h"
#include "server/page_contexts.h"

namespace orvane::server {

// Keys of the remote control: asks the set who gets one, and brings the page those that it gets.
// The loop's thread only.
class KeyPresses {
 public:
  // Borrows them. `app_id` is the application whose pages are served.
  KeyPresses(asio::io_context& loop, Library& library, PageContexts& contexts, std::string app_id)
      : loop_(loop), library_(library), contexts_(contexts), app_id_(std::move(app_id)) {}

  enum class Kind { kShort, kLong, kNative };
  // As a person's press; kNative: the browser brought it to the page by itself.
  void Press(std::string_view key_name_json, Kind kind);

  // The set's event "key".
  void OnKeyEvent(const JsonObject& event);

 private:
  struct LongPress;

  void Deliver(std::string_view key, std::string_view phase, bool is_repeat);
  void StartLongPress(const std::string& key);
  void Repeat(const std::shared_ptr<LongPress>& press);

  asio::io_context& loop_;
  Library& library_;
  PageContexts& contexts_;
  const std::string app_id_;
};

}  // namespace orvane::server
