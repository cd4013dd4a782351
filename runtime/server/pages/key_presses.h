// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "base/json_object.h"
#include "base/net.h"
#include "server/pages/page_contexts.h"
#include "set_process/set_process.h"

namespace orvane::server {

// Keys of the remote control: asks the set who gets one, and brings the page those that it gets.
// The loop's thread only.
class KeyPresses {
 public:
  // Borrows them. `app_id` is the application whose pages are served.
  KeyPresses(asio::io_context& loop, set_process::SetProcess& set_process, PageContexts& contexts,
             std::string app_id)
      : loop_(loop), set_process_(set_process), contexts_(contexts), app_id_(std::move(app_id)) {}

  enum class Kind { kShort, kLong, kNative };
  // As a person's press; kNative: the browser brought it to the page by itself.
  void Press(std::string_view key_name_json, Kind kind);

  // The set's event "key".
  void OnKeyEvent(const base::JsonObject& event);

 private:
  struct LongPress;

  void Deliver(std::string_view key, std::string_view phase, bool is_repeat);
  void StartLongPress(const std::string& key);
  void Repeat(const std::shared_ptr<LongPress>& press);

  asio::io_context& loop_;
  set_process::SetProcess& set_process_;
  PageContexts& contexts_;
  const std::string app_id_;
};

}  // namespace orvane::server
