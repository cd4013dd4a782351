// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace orvane::page {

class PageWorkQueue;

// The time that timers and limits go by, and the one place where a page thread blocks. Tests put
// their own in.
class Clock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  virtual ~Clock() = default;

  virtual TimePoint Now() = 0;

  // Blocks until there is work in the queue, or the time is `until`.
  virtual void WaitForWork(PageWorkQueue& work_queue, TimePoint until) = 0;

  // The machine's monotonic clock. Thread-safe.
  static Clock& Monotonic();
};

}  // namespace orvane::page
