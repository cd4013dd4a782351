// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

#include "page/clock.h"

namespace orvane::page {

class PageCore;

// Work for a page, brought from any thread. It finds its page by number, so a letter for a page
// that is gone is dropped.
struct Letter {
  uint64_t page;
  std::function<void(PageCore&)> work;
};

// Where other threads leave letters for the pages of one PageRuntime. Shared by the runtime and by
// whoever may still have a letter to bring, so it may outlive the runtime.
class Mailbox {
 public:
  // Any thread. Letters keep the order in which they were posted.
  void Post(Letter letter);

  // The page thread.
  std::vector<Letter> TakeAll();
  void WaitUntil(Clock::TimePoint until);  // returns at once when there is a letter

 private:
  std::mutex mutex_;
  std::condition_variable posted_;
  std::vector<Letter> letters_;  // guarded by mutex_
};

}  // namespace orvane::page
