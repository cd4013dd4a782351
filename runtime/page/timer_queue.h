// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "page/clock.h"

namespace orvane::page {

// The timers of one page: which is due when, in which order, and what it does then. Timers run in
// the order of the times they are due, those due at the same time in the order they were set. One
// thread only.
class TimerQueue {
 public:
  enum class Repeat { kOnce, kInterval };
  using Handler = std::function<void()>;

  // Returns the timer's number, from 1 and never given twice. `now` is the time that the delay
  // counts from; a negative delay is none. A timer set by a timer set by a timer … is not run more
  // often than every 4 ms from the sixth level on, as in browsers; an interval's runs count as
  // levels.
  int32_t Add(std::chrono::milliseconds delay, Repeat repeat, Clock::TimePoint now,
              Handler handler);
  // Nothing happens for a number that is not in use. A handler that runs may remove its own timer.
  void Remove(int32_t timer);
  void Clear();

  bool empty() const { return due_.empty(); }
  // When the first timer is due; nothing when there is none.
  std::optional<Clock::TimePoint> NextDue() const;

  // Begins a turn: only what is due now and was set before takes part in it, so that a timer that
  // sets itself anew cannot hold up a page.
  void BeginTurn(Clock::TimePoint now);
  // The handler of the turn's next timer; empty when the turn is over. A timer that is not repeated
  // is no longer in use then; one that is repeated is due again `now` plus its interval, once
  // however many times were missed. The caller runs the handler, a copy: its timer may be removed
  // meanwhile.
  Handler TakeDue(Clock::TimePoint now);
  // The timers that are set until the next call are set by the timer that was taken last.
  void EndTimer() { running_level_ = 0; }

 private:
  using Key = std::pair<Clock::TimePoint, uint64_t>;  // when, and in which order
  // `interval` is the delay as it was asked for, `level` how many timers led to this one.
  struct Timer {
    Key due;
    std::chrono::milliseconds interval{0};
    Repeat repeat = Repeat::kOnce;
    int level = 0;
    Handler handler;
  };
  // Puts the timer where it is due next.
  void Schedule(int32_t timer, Timer state, Clock::TimePoint now);

  int32_t last_timer_ = 0;
  uint64_t last_order_ = 0;
  // Of the timer that runs; 0 when none does.
  int running_level_ = 0;
  // What took part in the turn that was begun last.
  Clock::TimePoint turn_now_{};
  uint64_t turn_last_order_ = 0;
  // The same timers twice: in their order, and by number.
  std::map<Key, int32_t> due_;
  std::unordered_map<int32_t, Timer> timers_;
};

}  // namespace orvane::page
