// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/call_gate.h"

namespace orvane::extensions {

CallGate::Pass::Pass(CallGate& gate) : gate_(gate), open_(gate.Enter()), outer_(innermost_) {
  innermost_ = this;
}

CallGate::Pass::~Pass() {
  innermost_ = outer_;
  if (open_) gate_.Leave();
}

bool CallGate::Enter() {
  if ((state_.fetch_add(1, std::memory_order_acquire) & kClosed) == 0) return true;
  Leave();
  return false;
}

void CallGate::Leave() {
  if ((state_.fetch_sub(1, std::memory_order_acq_rel) & kClosed) == 0) return;
  std::lock_guard<std::mutex> lock(mutex_);
  left_.notify_all();
}

uint32_t CallGate::PassesOfThisThread() const {
  uint32_t count = 0;
  for (const Pass* pass = innermost_; pass != nullptr; pass = pass->outer_) {
    if (&pass->gate_ == this && pass->open_) ++count;
  }
  return count;
}

void CallGate::Close() {
  state_.fetch_or(kClosed, std::memory_order_acq_rel);
  const uint32_t own = PassesOfThisThread();
  std::unique_lock<std::mutex> lock(mutex_);
  left_.wait(lock,
             [this, own] { return (state_.load(std::memory_order_acquire) & ~kClosed) <= own; });
}

}  // namespace orvane::extensions
