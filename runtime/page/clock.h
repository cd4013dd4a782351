// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace orvane::page {

class Mailbox;

// The time that timers and limits go by, and the one place where a page thread blocks. Tests put
// their own in.
class Clock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  virtual ~Clock() = default;

  virtual TimePoint Now() = 0;

  // Blocks until `mailbox` holds a letter or the time is `until`.
  virtual void WaitForMail(Mailbox& mailbox, TimePoint until) = 0;

  // The machine's monotonic clock. Thread-safe.
  static Clock& Monotonic();
};

}  // namespace orvane::page
