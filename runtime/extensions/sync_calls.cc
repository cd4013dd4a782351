// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/sync_calls.h"

#include <utility>

namespace orvane::extensions {

SyncCalls::Call::Call(SyncCalls& calls) : calls_(calls), outer_(calls.innermost_) {
  std::lock_guard<std::mutex> lock(calls_.mutex_);
  calls_.innermost_ = this;
}

SyncCalls::Call::~Call() {
  std::lock_guard<std::mutex> lock(calls_.mutex_);
  calls_.innermost_ = outer_;
}

std::optional<std::string> SyncCalls::Call::Wait(std::chrono::milliseconds deadline) {
  std::unique_lock<std::mutex> lock(calls_.mutex_);
  const auto is_over = [this] { return reply_.has_value() || calls_.ended_; };
  if (!is_over() && !calls_.changed_.wait_for(lock, deadline, is_over)) return std::nullopt;
  return reply_.has_value() ? std::move(reply_) : std::string();
}

SyncCalls::Effect SyncCalls::Reply(const char* reply) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (innermost_ == nullptr) return Effect::kNobodyWaits;
  if (innermost_->reply_.has_value()) return Effect::kSecondReply;
  innermost_->reply_.emplace(reply);
  changed_.notify_all();
  return Effect::kTaken;
}

void SyncCalls::End() {
  std::lock_guard<std::mutex> lock(mutex_);
  ended_ = true;
  changed_.notify_all();
}

}  // namespace orvane::extensions
