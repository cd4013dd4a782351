// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/page_work_queue.h"

#include <utility>

namespace orvane::page {

void PageWorkQueue::Post(PageWork work) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  posted_.notify_one();
}

std::vector<PageWork> PageWorkQueue::TakeAll() {
  std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(waiting_, {});
}

void PageWorkQueue::WaitUntil(Clock::TimePoint until) {
  std::unique_lock<std::mutex> lock(mutex_);
  posted_.wait_until(lock, until, [this] { return !waiting_.empty(); });
}

}  // namespace orvane::page
