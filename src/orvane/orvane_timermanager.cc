// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/orvane_timermanager.h"

#include <chrono>
#include <mutex>

#include <screensaver.h>

#include "common/logger.h"

namespace extension::orvane {

namespace {

constexpr std::chrono::nanoseconds kPeriod = std::chrono::seconds(30);

}  // namespace

TimerManager::TimerManager() : running_(false) {}

TimerManager::~TimerManager() {
  LoggerD("Enter destructor");
  stopTimer();
}

bool TimerManager::startTimer() {
  if (thread_ != nullptr) {
    return false;
  }
  LoggerI("[Screensaver] Starting timer");
  running_ = true;
  thread_ = std::make_unique<std::thread>([this] { KeepAwake(); });
  return true;
}

bool TimerManager::stopTimer() {
  if (thread_ == nullptr) {
    return false;
  }
  LoggerI("[Screensaver] Stopping timer");
  running_ = false;
  cond_.notify_all();
  if (thread_->joinable()) {
    thread_->join();
  }
  thread_.reset();
  return true;
}

void TimerManager::KeepAwake() {
  LoggerD("[Screensaver] Timer thread start");
  // The wait wants a mutex; nobody else locks this one, so that a wake-up may be lost (see
  // stopTimer).
  std::mutex mutex;
  std::unique_lock<std::mutex> lock(mutex);
  while (running_) {
    cond_.wait_until(lock, std::chrono::steady_clock::now() + kPeriod);
    if (running_) {
      screensaver_reset_timeout();
      LoggerI("[Screensaver] screensaver_reset_timeout()");
    }
  }
  LoggerD("[Screensaver] Timer thread terminate");
}

}  // namespace extension::orvane
