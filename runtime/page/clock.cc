// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/clock.h"

#include "page/page_work_queue.h"

namespace orvane::page {

void Clock::WaitForWork(PageWorkQueue& work_queue, TimePoint until) { work_queue.WaitUntil(until); }

Clock& Clock::Monotonic() {
  static Clock clock;
  return clock;
}

}  // namespace orvane::page
