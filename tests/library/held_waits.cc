// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <time.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>

#include "system_fakes.h"

#define INTERPOSED extern "C" __attribute__((visibility("default")))

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience(60);

struct Waits {
  std::mutex mutex;
  std::condition_variable changed;
  // All guarded by mutex.
  int begun = 0;
  bool ended = true;
  int result = 0;
  steady_clock::time_point deadline;
  bool hold_entry = false;
  bool entry_held = false;
  int lost = 0;

  // The test's own waits are no held ones.
  const pthread_t test_thread = pthread_self();
  // The condition on which the held wait listens, and the one that waits used last.
  std::atomic<pthread_cond_t*> listening{nullptr};
  std::atomic<pthread_cond_t*> known{nullptr};

  template <class Condition>
  void Await(std::unique_lock<std::mutex>& lock, Condition condition) {
    if (!changed.wait_for(lock, kPatience, condition)) {
      throw std::runtime_error("what a held wait was to do did not happen");
    }
  }

  void End(int with_result) {
    const std::lock_guard<std::mutex> lock(mutex);
    ended = true;
    result = with_result;
    changed.notify_all();
  }
};

std::atomic<Waits*> g_waits{nullptr};

steady_clock::time_point TimePoint(const timespec& time) {
  return steady_clock::time_point(std::chrono::seconds(time.tv_sec) +
                                  std::chrono::nanoseconds(time.tv_nsec));
}

int Hold(Waits& waits, pthread_cond_t* condition, pthread_mutex_t* mutex,
         const timespec& deadline) {
  {
    std::unique_lock<std::mutex> lock(waits.mutex);
    waits.known = condition;
    if (waits.hold_entry) {
      waits.entry_held = true;
      waits.changed.notify_all();
      waits.changed.wait(lock, [&waits] { return !waits.hold_entry; });
      waits.entry_held = false;
    }
    ++waits.begun;
    waits.deadline = TimePoint(deadline);
    waits.ended = false;
    waits.result = 0;
    waits.listening = condition;
    waits.changed.notify_all();
  }
  pthread_mutex_unlock(mutex);
  int result = 0;
  {
    std::unique_lock<std::mutex> lock(waits.mutex);
    waits.changed.wait(lock, [&waits] { return waits.ended; });
    waits.listening = nullptr;
    result = waits.result;
  }
  pthread_mutex_lock(mutex);
  return result;
}

}  // namespace

INTERPOSED int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                                      clockid_t clock, const timespec* deadline) {
  using Function = int(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*);
  static auto* const real = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "pthread_cond_clockwait"));
  Waits* const waits = g_waits.load();
  if (waits == nullptr || clock != CLOCK_MONOTONIC ||
      pthread_equal(pthread_self(), waits->test_thread) != 0) {
    return real(condition, mutex, clock, deadline);
  }
  return Hold(*waits, condition, mutex, *deadline);
}

INTERPOSED int pthread_cond_broadcast(pthread_cond_t* condition) noexcept {
  static auto* const real =
      reinterpret_cast<int (*)(pthread_cond_t*)>(dlsym(RTLD_NEXT, "pthread_cond_broadcast"));
  if (Waits* const waits = g_waits.load()) {
    if (condition == waits->listening.load()) {
      waits->End(0);
    } else if (condition == waits->known.load()) {
      const std::lock_guard<std::mutex> lock(waits->mutex);
      ++waits->lost;
      waits->changed.notify_all();
    }
  }
  return real(condition);
}

namespace orvane::test {

HeldWaits::HeldWaits() {
  // Never freed: a thread of another test's may be looking at one.
  static std::vector<std::unique_ptr<Waits>> all;
  all.push_back(std::make_unique<Waits>());
  g_waits = all.back().get();
}

HeldWaits::~HeldWaits() { g_waits = nullptr; }

std::chrono::steady_clock::time_point HeldWaits::AwaitWait(int number) {
  Waits& waits = *g_waits.load();
  std::unique_lock<std::mutex> lock(waits.mutex);
  waits.Await(lock, [&] { return waits.begun >= number; });
  return waits.deadline;
}

int HeldWaits::begun() const {
  const std::lock_guard<std::mutex> lock(g_waits.load()->mutex);
  return g_waits.load()->begun;
}

void HeldWaits::PassDeadline() { g_waits.load()->End(ETIMEDOUT); }

void HeldWaits::WakeSpuriously() { g_waits.load()->End(0); }

void HeldWaits::HoldEntry() {
  const std::lock_guard<std::mutex> lock(g_waits.load()->mutex);
  g_waits.load()->hold_entry = true;
}

void HeldWaits::AwaitHeldEntry() {
  Waits& waits = *g_waits.load();
  std::unique_lock<std::mutex> lock(waits.mutex);
  waits.Await(lock, [&] { return waits.entry_held; });
}

void HeldWaits::ReleaseEntry() {
  Waits& waits = *g_waits.load();
  const std::lock_guard<std::mutex> lock(waits.mutex);
  waits.hold_entry = false;
  waits.changed.notify_all();
}

void HeldWaits::AwaitLostNotification() {
  Waits& waits = *g_waits.load();
  std::unique_lock<std::mutex> lock(waits.mutex);
  waits.Await(lock, [&] { return waits.lost > 0; });
}

}  // namespace orvane::test
