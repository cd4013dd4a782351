// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/clock.h"

#include "page/page_work_queue.h"

namespace orvane::page {
namespace {

class MonotonicClock final : public Clock {
 public:
  TimePoint Now() override { return std::chrono::steady_clock::now(); }
  void WaitForWork(PageWorkQueue& work_queue, TimePoint until) override {
    work_queue.WaitUntil(until);
  }
};

}  // namespace

Clock& Clock::Monotonic() {
  static MonotonicClock clock;
  return clock;
}

}  // namespace orvane::page
