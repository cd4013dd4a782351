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
// wait for a screen saver. Any thread. Owned by std::shared_ptr, made by Create: alarms of the
// other clock that are under way find out that it is gone.
class ShiftedClock final : public tvset::Clock, public std::enable_shared_from_this<ShiftedClock> {
 public:
  // Beyond it the clock is moved no further: its times would not fit their type.
  static constexpr std::chrono::milliseconds kMostShift = std::chrono::hours(100 * 366 * 24);

  static std::shared_ptr<ShiftedClock> Create(
      std::shared_ptr<tvset::Clock> base = tvset::Clock::Steady());

  TimePoint Now() const override;
  void SetAlarm(TimePoint when, std::function<void()> ring) override;

  // Rings the alarms that are due then, on the calling thread, before it returns. Time never goes
  // back: a negative step counts as none.
  void Advance(std::chrono::nanoseconds step);
  std::chrono::nanoseconds shift() const;

 private:
  explicit ShiftedClock(std::shared_ptr<tvset::Clock> base) : base_(std::move(base)) {}

  void AskBaseLocked();  // to ring for the first alarm
  void RingDue();
  std::function<void()> TakeDue();

  const std::shared_ptr<tvset::Clock> base_;
  mutable std::mutex mutex_;
  std::chrono::nanoseconds shift_{0};                       // guarded by mutex_
  std::multimap<TimePoint, std::function<void()>> alarms_;  // guarded by mutex_
};

}  // namespace orvane::television
