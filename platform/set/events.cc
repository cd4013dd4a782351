// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/events.h"

#include <algorithm>

namespace tvset {
namespace {

// The entries whose observers this thread is inside, innermost last. An observer that removes
// itself must not wait for its own call.
std::vector<const void*>& CallsOfThisThread() {
  thread_local std::vector<const void*> calls;
  return calls;
}

}  // namespace

Observer::~Observer() = default;

EventHub::EventHub() = default;
EventHub::~EventHub() = default;

void EventHub::Add(Observer* observer) {
  std::lock_guard<std::mutex> lock(mutex_);
  auto entry = std::make_shared<Entry>();
  entry->observer = observer;
  entries_.push_back(std::move(entry));
  count_.store(static_cast<int>(entries_.size()), std::memory_order_release);
}

void EventHub::Remove(Observer* observer) {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto found = std::find_if(
      entries_.begin(), entries_.end(),
      [observer](const std::shared_ptr<Entry>& entry) { return entry->observer == observer; });
  if (found == entries_.end()) return;
  const std::shared_ptr<Entry> entry = *found;
  entry->removed = true;
  entries_.erase(found);
  count_.store(static_cast<int>(entries_.size()), std::memory_order_release);
  const std::vector<const void*>& own = CallsOfThisThread();
  const auto own_calls = std::count(own.begin(), own.end(), entry.get());
  left_.wait(lock, [&] { return entry->running <= own_calls; });
}

std::vector<std::shared_ptr<EventHub::Entry>> EventHub::Snapshot() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return entries_;
}

bool EventHub::Enter(Entry& entry) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (entry.removed) return false;
  CallsOfThisThread().push_back(&entry);
  ++entry.running;
  return true;
}

void EventHub::Leave(Entry& entry) {
  CallsOfThisThread().pop_back();
  std::lock_guard<std::mutex> lock(mutex_);
  --entry.running;
  if (entry.removed) left_.notify_all();
}

}  // namespace tvset
