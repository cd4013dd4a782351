// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/context_manager.h"

namespace tvset {

ContextManager::ContextManager(EventHub& events) : events_(events) {}

void ContextManager::Initialize() {
  std::lock_guard<std::mutex> lock(mutex_);
  ++initialized_;
}

int ContextManager::initialized() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return initialized_;
}

bool ContextManager::RequestTask(const std::string& target, const std::string& action) {
  if (target != "last:source" || action != "launch") return false;
  const ContextTask task{target, action};
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (initialized_ == 0) return false;
    if (tasks_.size() == kMaxRecorded) tasks_.erase(tasks_.begin());
    tasks_.push_back(task);
  }
  events_.Notify([&task](Observer& observer) { observer.OnContextTask(task); });
  return true;
}

std::vector<ContextTask> ContextManager::tasks() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return tasks_;
}

void ContextManager::Clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  initialized_ = 0;
  tasks_.clear();
}

}  // namespace tvset
