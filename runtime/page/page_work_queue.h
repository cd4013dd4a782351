// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

#include "page/clock.h"

namespace orvane::page {

class PageCore;

// Something that a page is to do, such as handing a posted message to its script. It owns what it
// needs but the page, and may be destroyed undone, on any thread.
using PageWork = std::function<void(PageCore&)>;

// How other threads reach a page: an extension posts a message from its worker, and the page thread
// takes it from here in its loop. Shared by the page and by whoever may still have something to
// post, so it may outlive the page; what is posted then is never done.
class PageWorkQueue {
 public:
  // Any thread. Work keeps the order in which it was posted. Does not wait for the page.
  void Post(PageWork work);

  // The page thread, for both. Takes what is there, the oldest first.
  std::vector<PageWork> TakeAll();
  // Returns at once when there is work, and otherwise when some comes or the time is `until`.
  void WaitUntil(Clock::TimePoint until);

 private:
  std::mutex mutex_;
  std::condition_variable posted_;
  // Guarded by mutex_.
  std::vector<PageWork> waiting_;
};

}  // namespace orvane::page
