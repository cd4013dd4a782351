// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "base/child_process.h"
#include "base/json.h"
#include "set_process/message_in_hand.h"

namespace orvane::set_process {

// What the set process works at, as it noted before it began, and how its runs ended that nobody
// had asked to end: so that an end names the message that led to it. Belongs to SetProcess. One
// thread.
class ProcessHistory {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  void BeginRun();  // throws std::system_error
  // The descriptor of the memory in which the process notes what it works at. Borrowed, for this
  // run.
  int memory() const { return in_hand_->descriptor(); }
  // Returns what there is to say of it, a sentence without its full stop. `reason` is why this side
  // ended the process, or empty; `output` is what it wrote last.
  std::string EndRun(const base::ProcessEnd& end, const std::string& reason,
                     const std::string& output);
  void ForgetDeaths() { deaths_.clear(); }

  bool is_busy() const { return in_hand_ && in_hand_->is_busy(); }
  TimePoint last_begin() const { return in_hand_->last_begin(); }  // of a message
  // The message in hand: what, context, name and text; null when there is none.
  Json Message() const;
  // Such as: sync dravelt.orvane "OrvaneManager_getAppState". Also of one that is done.
  std::string MessageWords() const;

  // The newest last; the oldest are forgotten.
  Json Deaths() const;
  // So many within so short a time that starting it again would be in vain.
  bool AreDeathsTooMany() const;

 private:
  struct Death {
    TimePoint time;
    Json description;
  };

  std::unique_ptr<MessageInHand> in_hand_;  // null: no process runs
  std::vector<Death> deaths_;
};

}  // namespace orvane::set_process
