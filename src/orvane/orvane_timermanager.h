// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <thread>

namespace extension::orvane {

// Holds the screen saver off: while it runs, a thread of its own resets the screen saver's idle
// time every 30 seconds.
//
// The manager of an instance owns it, so that there is one such thread per page context at most.
// startTimer and stopTimer come one at a time, from the task worker or from the manager's
// destruction; nothing here guards against two at once. A reset that the service refuses goes
// unnoticed.
class TimerManager {
 public:
  TimerManager();
  // Stops the thread, for which see stopTimer.
  ~TimerManager();

  TimerManager(const TimerManager&) = delete;
  TimerManager& operator=(const TimerManager&) = delete;

  // False when the thread runs already. The first reset comes one period after this.
  bool startTimer();

  // False when no thread runs. Returns when the thread has ended, which is at once, or after up to
  // one period when the wake-up falls between the thread's look at the flag and its wait.
  bool stopTimer();

 private:
  void KeepAwake();

  // The thread's two ends: cleared and notified by stopTimer, watched by KeepAwake.
  std::atomic<bool> running_;
  std::condition_variable cond_;

  // Null while no thread runs; this, and not running_, is what "runs" means above.
  std::unique_ptr<std::thread> thread_;
};

}  // namespace extension::orvane
