// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "tvset/clock.h"

namespace orvane::television {

// A clock that runs as another one does, and can be moved forward by hand, so that nobody has to
// wait for a screen saver. The set's screen saver reads it and has it ring; clock.advance moves it,
// and a snapshot carries how far.
//
// Owned by std::shared_ptr, made by Create: alarms of the other clock that are under way find out
// that it is gone. Any thread. Alarms ring with no lock held, on the other clock's thread, or on
// that which moves this one.
class ShiftedClock final : public tvset::Clock, public std::enable_shared_from_this<ShiftedClock> {
 public:
  // A hundred years. Beyond it the clock is moved no further: its times would not fit their type.
  static constexpr std::chrono::milliseconds kMostShift = std::chrono::hours(100 * 366 * 24);

  // Not moved yet: shows the time of `base`, which it shares.
  static std::shared_ptr<ShiftedClock> Create(
      std::shared_ptr<tvset::Clock> base = tvset::Clock::Steady());

  // As tvset::Clock has them. An alarm whose time has passed already rings soon, on the other
  // clock's thread; none can be taken back.
  TimePoint Now() const override;
  void SetAlarm(TimePoint when, std::function<void()> ring) override;

  // Rings the alarms that are due then, the earliest first, on the calling thread, before it
  // returns; also one that an alarm asks for meanwhile. Time never goes back: a negative step
  // counts as none, and one beyond kMostShift is cut short.
  void Advance(std::chrono::nanoseconds step);
  // By how much it was moved in all.
  std::chrono::nanoseconds shift() const;

 private:
  explicit ShiftedClock(std::shared_ptr<tvset::Clock> base) : base_(std::move(base)) {}

  // Has the other clock ring for the first alarm; mutex_ held.
  void AskBaseLocked();
  void RingDue();
  // The first alarm if it is due, else null.
  std::function<void()> TakeDue();

  // Fixed after construction:
  const std::shared_ptr<tvset::Clock> base_;

  // Guarded by mutex_:
  mutable std::mutex mutex_;
  std::chrono::nanoseconds shift_{0};
  // By the time at which they ring, on this clock.
  std::multimap<TimePoint, std::function<void()>> alarms_;
};

}  // namespace orvane::television
