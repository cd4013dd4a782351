// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "base/net.h"
#include "server/pages/page_contexts.h"
#include "set_process/set_process.h"

namespace orvane::server {

// How a key that is held comes to the page: as of a remote control that is held for a second, the
// first repetition late.
struct KeyTimes {
  std::chrono::milliseconds before_repeat{500};
  std::chrono::milliseconds between_repeats{100};
  int repeats = 6;
};

// Keys of the remote control: asks the set who gets one, and brings the page those that it gets.
// The loop's thread only.
class KeyPresses {
 public:
  // Borrows them. `app_id` is the application whose pages are served.
  KeyPresses(asio::io_context& loop, set_process::SetProcess& set_process, PageContexts& contexts,
             std::string app_id, const KeyTimes& times)
      : loop_(loop),
        set_process_(set_process),
        contexts_(contexts),
        app_id_(std::move(app_id)),
        times_(times) {}

  enum class PressKind { kShort, kLong, kNative };
  // As a person's press; kNative: the browser brought it to the page by itself.
  void Press(const std::string& key_name, PressKind kind);

  // The set's event "key".
  void OnKeyEvent(const Json& data);

 private:
  struct LongPress;

  void Deliver(Json key, const char* phase, bool is_repeat);
  void StartLongPress(const Json& key);
  void Repeat(const std::shared_ptr<LongPress>& press);

  asio::io_context& loop_;
  set_process::SetProcess& set_process_;
  PageContexts& contexts_;
  const std::string app_id_;
  const KeyTimes times_;
};

}  // namespace orvane::server
