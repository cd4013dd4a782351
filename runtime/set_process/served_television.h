// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/json.h"
#include "set_process/event_sender.h"
#include "set_process/frame_sender.h"
#include "set_process/message_in_hand.h"
#include "set_process/page_instances.h"
#include "television/control.h"
#include "television/television.h"

namespace orvane::set_process {

// The television of the set process, with its page contexts, its control methods and what tells the
// server of it. Borrows the last two. Belongs to the extension thread.
class ServedTelevision final : private television::TelevisionListener {
 public:
  // `last_log_line` is the number after which those of the log go on. Throws as Television and
  // Television::LoadExtensions; no set runs then.
  ServedTelevision(const television::TelevisionOptions& options,
                   const television::ShippedParts& shipped, const Json& snapshot,
                   int64_t last_log_line, FrameSender& frames, MessageInHand& in_hand);
  ~ServedTelevision() override;
  ServedTelevision(const ServedTelevision&) = delete;
  ServedTelevision& operator=(const ServedTelevision&) = delete;

  // The answer to the server's "start". Loads every extension for it: a page's script text holds
  // the script of each.
  Json Started();

  television::RuntimeServices& services() { return television_.services(); }
  EventSender& events() { return events_; }
  PageInstances& contexts() { return *contexts_; }
  television::Control& control() { return *control_; }

 private:
  void OnExplanation(const std::string& text) override { events_.Explain(text); }
  void OnWarning(const std::string& text) override { events_.Explain("Warning: " + text); }
  void OnLoading(const std::string& name) override { in_hand_.Begin("load", 0, name, ""); }
  void OnTouched(television::Part part) override { events_.Touch(part); }

  MessageInHand& in_hand_;
  television::Television television_;
  EventSender events_;
  std::optional<PageInstances> contexts_;
  std::optional<television::Control> control_;
};

}  // namespace orvane::set_process
