// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/clock.h"

#include <pthread.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <thread>
#include <utility>

#include "tvset/error.h"

namespace tvset {
namespace {

// A timer of the kernel that counts the same time as std::chrono::steady_clock.
class KernelTimer {
 public:
  KernelTimer() : descriptor_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC)) {
    if (descriptor_ < 0) throw SetError("the kernel gives no timer for the set's clock");
  }
  ~KernelTimer() { close(descriptor_); }
  KernelTimer(const KernelTimer&) = delete;
  KernelTimer& operator=(const KernelTimer&) = delete;

  // Ends a wait at that time, at once when it has passed.
  void Set(Clock::TimePoint when) {
    // A time of nothing would turn the timer off.
    const auto time = std::max(when.time_since_epoch(), Clock::TimePoint::duration(1));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    itimerspec setting = {};
    setting.it_value.tv_sec = seconds.count();
    const std::chrono::nanoseconds rest = time - seconds;
    setting.it_value.tv_nsec = rest.count();
    timerfd_settime(descriptor_, TFD_TIMER_ABSTIME, &setting, nullptr);
  }

  void Wait() {
    uint64_t times = 0;
    while (read(descriptor_, &times, sizeof(times)) < 0 && errno == EINTR) {
    }
  }

 private:
  const int descriptor_;
};

class SteadyClock final : public Clock {
 public:
  TimePoint Now() const override { return std::chrono::steady_clock::now(); }

  void SetAlarm(TimePoint when, std::function<void()> ring) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!started_) std::thread([this] { Run(); }).detach();
    started_ = true;
    if (alarms_.empty() || when < alarms_.begin()->first) timer_.Set(when);
    alarms_.emplace(when, std::move(ring));
  }

 private:
  // Until the process ends.
  void Run() {
    pthread_setname_np(pthread_self(), "set-clock");
    while (true) {
      timer_.Wait();
      while (const std::function<void()> ring = NextDue()) ring();
    }
  }

  // Empty: none is due, and the timer is set for the next.
  std::function<void()> NextDue() {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (alarms_.empty()) return nullptr;
    if (Now() < alarms_.begin()->first) {
      timer_.Set(alarms_.begin()->first);
      return nullptr;
    }
    auto alarm = alarms_.extract(alarms_.begin());
    return std::move(alarm.mapped());
  }

  KernelTimer timer_;
  std::mutex mutex_;
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
