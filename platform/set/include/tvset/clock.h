// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "tvset/export.h"

namespace tvset {

// Time that only goes forward, and alarms on it: what the set's services wait by, so that a test or
// a person can let it pass. Partner of ScreenSaver, which shares the clock that it is given. Any
// thread.
class TVSET_EXPORT Clock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  Clock() = default;
  virtual ~Clock();

  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;

  // Never earlier than it was before.
  virtual TimePoint Now() const = 0;

  // Calls `ring` once, when the time has come (at once when it is past); never from within
  // SetAlarm, and with no lock held, so that it may set the next alarm. It must not throw. An alarm
  // cannot be taken back: who no longer wants it ignores it. What `ring` refers to lives until
  // then.
  virtual void SetAlarm(TimePoint when, std::function<void()> ring) = 0;

  // The machine's steady clock, one for the process. Alarms ring one after the other on a thread of
  // its own, which begins with the first and stays. Throws SetError when the kernel gives no timer.
  static std::shared_ptr<Clock> Steady();
};

// A clock that stands still, at nought, until it is moved; for tests, which need not wait then, and
// learn what happens in which order. Any thread moves it, one at a time.
class TVSET_EXPORT ManualClock final : public Clock {
 public:
  TimePoint Now() const override;
  void SetAlarm(TimePoint when, std::function<void()> ring) override;

  // Forward by so much. Rings the alarms that come due on the way, each at its own time, on the
  // calling thread, also those that an alarm sets meanwhile.
  void Advance(std::chrono::nanoseconds step);

 private:
  // The first alarm that is due by then; moves to its time. Empty: none is, moves to `end`.
  std::function<void()> NextAlarm(TimePoint end);

  mutable std::mutex mutex_;
  // Guarded by mutex_:
  TimePoint now_{};
  // By the time at which they ring.
  std::multimap<TimePoint, std::function<void()>> alarms_;
};

}  // namespace tvset
