// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/mailbox.h"

#include <utility>

namespace orvane::page {

void Mailbox::Post(Letter letter) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    letters_.push_back(std::move(letter));
  }
  posted_.notify_one();
}

std::vector<Letter> Mailbox::TakeAll() {
  std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(letters_, {});
}

void Mailbox::WaitUntil(Clock::TimePoint until) {
  std::unique_lock<std::mutex> lock(mutex_);
  posted_.wait_until(lock, until, [this] { return !letters_.empty(); });
}

}  // namespace orvane::page
