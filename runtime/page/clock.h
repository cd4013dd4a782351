// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace orvane::page {

class PageWorkQueue;

// The time that timers and limits go by, and the one place where a page thread blocks while it has
// nothing to run. This one is the machine's monotonic clock; tests put their own in. Borrowed by a
// PageRuntime, whose page thread calls both; Now is also called by extensions' threads, to stamp
// what they post.
class Clock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  virtual ~Clock() = default;

  // Never goes back.
  virtual TimePoint Now() { return std::chrono::steady_clock::now(); }

  // Blocks until there is work in the queue, or the time is `until`.
  virtual void WaitForWork(PageWorkQueue& work_queue, TimePoint until);

  // The one of the process, for any number of runtimes. Thread-safe.
  static Clock& Monotonic();
};

}  // namespace orvane::page
