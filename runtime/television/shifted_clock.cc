// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/shifted_clock.h"

#include <algorithm>
#include <utility>

namespace orvane::television {

std::shared_ptr<ShiftedClock> ShiftedClock::Create(std::shared_ptr<tvset::Clock> base) {
  return std::shared_ptr<ShiftedClock>(new ShiftedClock(std::move(base)));
}

tvset::Clock::TimePoint ShiftedClock::Now() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return base_->Now() + shift_;
}

void ShiftedClock::SetAlarm(TimePoint when, std::function<void()> ring) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto alarm = alarms_.emplace(when, std::move(ring));
  if (alarm == alarms_.begin()) AskBaseLocked();
}

void ShiftedClock::Advance(std::chrono::nanoseconds step) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::chrono::nanoseconds most = kMostShift;
    shift_ += std::clamp(step, std::chrono::nanoseconds(0), most - shift_);
  }
  RingDue();
}

std::chrono::nanoseconds ShiftedClock::shift() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return shift_;
}

// Earlier requests stay with the base and find nothing due when they ring.
void ShiftedClock::AskBaseLocked() {
  base_->SetAlarm(alarms_.begin()->first - shift_, [weak = weak_from_this()] {
    if (const std::shared_ptr<ShiftedClock> self = weak.lock()) self->RingDue();
  });
}

void ShiftedClock::RingDue() {
  while (const std::function<void()> ring = TakeDue()) ring();
}

std::function<void()> ShiftedClock::TakeDue() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (alarms_.empty()) return nullptr;
  if (base_->Now() + shift_ < alarms_.begin()->first) {
    AskBaseLocked();
    return nullptr;
  }
  auto alarm = alarms_.extract(alarms_.begin());
  return std::move(alarm.mapped());
}

}  // namespace orvane::television
