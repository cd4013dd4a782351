// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/clock.h"

#include <pthread.h>

#include <algorithm>
#include <condition_variable>
#include <thread>
#include <utility>

namespace tvset {
namespace {

class SteadyClock final : public Clock {
 public:
  TimePoint Now() const override { return std::chrono::steady_clock::now(); }

  void SetAlarm(TimePoint when, std::function<void()> ring) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!started_) std::thread([this] { Run(); }).detach();
    started_ = true;
    alarms_.emplace(when, std::move(ring));
    changed_.notify_one();
  }

 private:
  // Until the process ends.
  void Run() {
    pthread_setname_np(pthread_self(), "set-clock");
    std::unique_lock<std::mutex> lock(mutex_);
    while (true) {
      if (alarms_.empty()) {
        changed_.wait(lock);
      } else if (const TimePoint when = alarms_.begin()->first; Now() < when) {
        changed_.wait_until(lock, when);
      } else {
        const auto alarm = alarms_.extract(alarms_.begin());
        lock.unlock();
        alarm.mapped()();
        lock.lock();
      }
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::multimap<TimePoint, std::function<void()>> alarms_;  // guarded by mutex_
  bool started_ = false;                                    // guarded by mutex_
};

}  // namespace

Clock::~Clock() = default;

std::shared_ptr<Clock> Clock::Steady() {
  // Never destroyed: its thread runs to the end of the process.
  static auto* const clock = new std::shared_ptr<Clock>(std::make_shared<SteadyClock>());
  return *clock;
}

Clock::TimePoint ManualClock::Now() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return now_;
}

void ManualClock::SetAlarm(TimePoint when, std::function<void()> ring) {
  const std::lock_guard<std::mutex> lock(mutex_);
  alarms_.emplace(when, std::move(ring));
}

void ManualClock::Advance(std::chrono::nanoseconds step) {
  const TimePoint end = Now() + step;
  while (const std::function<void()> ring = NextAlarm(end)) ring();
}

std::function<void()> ManualClock::NextAlarm(TimePoint end) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (alarms_.empty() || alarms_.begin()->first > end) {
    now_ = std::max(now_, end);
    return nullptr;
  }
  auto alarm = alarms_.extract(alarms_.begin());
  now_ = std::max(now_, alarm.key());
  return std::move(alarm.mapped());
}

}  // namespace tvset
