// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/timer_queue.h"

#include <algorithm>

namespace orvane::page {
namespace {

constexpr int kFreeLevels = 5;
constexpr std::chrono::milliseconds kNestedMinimum{4};

}  // namespace

int32_t TimerQueue::Add(std::chrono::milliseconds delay, Repeat repeat, Clock::TimePoint now,
                        Handler handler) {
  const int32_t timer = ++last_timer_;
  Schedule(timer, Timer{{}, std::max(delay, {}), repeat, running_level_ + 1, std::move(handler)},
           now);
  return timer;
}

void TimerQueue::Remove(int32_t timer) {
  const auto found = timers_.find(timer);
  if (found == timers_.end()) return;
  due_.erase(found->second.due);
  timers_.erase(found);
}

void TimerQueue::Clear() {
  due_.clear();
  timers_.clear();
}

std::optional<Clock::TimePoint> TimerQueue::NextDue() const {
  if (due_.empty()) return std::nullopt;
  return due_.begin()->first.first;
}

void TimerQueue::BeginTurn(Clock::TimePoint now) {
  turn_now_ = now;
  turn_last_order_ = last_order_;
}

TimerQueue::Handler TimerQueue::TakeDue(Clock::TimePoint now) {
  const auto next = std::find_if(due_.begin(), due_.end(), [this](const auto& entry) {
    return entry.first.first > turn_now_ || entry.first.second <= turn_last_order_;
  });
  if (next == due_.end() || next->first.first > turn_now_) return {};
  const int32_t timer = next->second;
  due_.erase(next);
  Timer taken = std::move(timers_.extract(timer).mapped());
  running_level_ = taken.level++;
  Handler handler = taken.handler;
  if (taken.repeat == Repeat::kInterval) Schedule(timer, std::move(taken), now);
  return handler;
}

void TimerQueue::Schedule(int32_t timer, Timer state, Clock::TimePoint now) {
  const auto delay =
      state.level > kFreeLevels ? std::max(state.interval, kNestedMinimum) : state.interval;
  state.due = {now + delay, ++last_order_};
  due_.emplace(state.due, timer);
  timers_[timer] = std::move(state);
}

}  // namespace orvane::page
