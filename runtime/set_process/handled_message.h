// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "base/frame.h"

namespace orvane::set_process {

// The message that the set process handles, or handled last, as it told before it began: what
// it died of, if it dies. One thread.
class HandledMessage {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  void Begin(const base::Frame& frame);
  // It told that the message is done, which gets no answer.
  void End() { is_done_ = true; }
  void Clear();

  bool is_known() const { return head_.is_object(); }
  // Between Begin and End. A message that is answered ends with its answer, of which this object
  // does not know: see request().
  bool is_open() const { return is_known() && !is_done_; }
  uint64_t request() const;  // 0: one without an answer
  TimePoint since() const { return since_; }

  Json Description() const;   // what, context, name and text
  std::string Words() const;  // such as: sync dravelt.orvane "OrvaneManager_getAppState"

 private:
  Json head_;
  std::string text_;  // the beginning of the message's
  bool is_done_ = false;
  TimePoint since_;
};

}  // namespace orvane::set_process
