// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "base/child_process.h"
#include "base/frame.h"

namespace orvane::set_process {

// What the set process works at, as it told before it began, and how its runs ended that nobody had
// asked to end: so that an end names the message that led to it. Belongs to SetProcess. One thread.
class ProcessHistory {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  void BeginRun();
  // The process's frames "handling", and "handled" for a message that gets no answer.
  void BeginMessage(base::Frame handling);
  void EndMessage() { is_busy_ = false; }
  // The request has its answer.
  void EndRequest(uint64_t id);
  // Returns what there is to say of it, a sentence without its full stop. `reason` is why this side
  // ended the process, or empty; `output` is what it wrote last.
  std::string EndRun(const base::ProcessEnd& end, const std::string& reason,
                     const std::string& output);
  void ForgetDeaths() { deaths_.clear(); }

  bool is_busy() const { return is_busy_; }
  TimePoint last_begin() const { return last_begin_; }  // of a message
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

  Json head_;         // of the last message's frame; null: there was none in this run
  std::string text_;  // the beginning of that message
  bool is_busy_ = false;
  TimePoint last_begin_;
  std::vector<Death> deaths_;
};

}  // namespace orvane::set_process
