// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace tvset {

// The live handles of one kind. A handle is a number that is never given twice, not an address, so
// that an invented handle, a destroyed one and one of another kind are told apart from a live one.
// Any thread.
template <typename Value>
class HandleTable {
 public:
  // `kind` keeps the numbers of two tables apart; 0 to 15.
  explicit HandleTable(uintptr_t kind) : last_(kind) {}

  void* Add(std::shared_ptr<Value> value) {
    std::lock_guard<std::mutex> lock(mutex_);
    last_ += 16;
    values_.emplace(last_, std::move(value));
    return reinterpret_cast<void*>(last_);
  }

  // Null: no such handle. The value lives while the result does, whoever destroys the handle.
  std::shared_ptr<Value> Find(const void* handle) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = values_.find(reinterpret_cast<uintptr_t>(handle));
    return found == values_.end() ? nullptr : found->second;
  }

  bool Remove(const void* handle) {
    std::lock_guard<std::mutex> lock(mutex_);
    return values_.erase(reinterpret_cast<uintptr_t>(handle)) == 1;
  }

  void Clear() {
    std::lock_guard<std::mutex> lock(mutex_);
    values_.clear();
  }

  size_t size() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return values_.size();
  }

 private:
  mutable std::mutex mutex_;
  uintptr_t last_;                                                // guarded by mutex_
  std::unordered_map<uintptr_t, std::shared_ptr<Value>> values_;  // guarded by mutex_
};

}  // namespace tvset
