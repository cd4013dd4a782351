// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "XW_Extension.h"

namespace orvane::extensions {

class Extension;
class HostContext;
class InstanceState;

// What is alive of one kind, by key. Thread-safe; what it returns is kept alive by the returned
// pointer.
template <typename Key, typename Value>
class Living {
 public:
  // False, and nothing done: the key is taken.
  bool Add(Key key, std::shared_ptr<Value> value) {
    std::lock_guard<std::mutex> lock(mutex_);
    return values_.emplace(key, std::move(value)).second;
  }

  // Returns what it was, so that it is destroyed after the lock is let go: it may own the last of a
  // host's options.
  std::shared_ptr<Value> Remove(Key key) {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto removed = values_.extract(key);
    return removed ? removed.mapped() : nullptr;
  }

  std::shared_ptr<Value> Find(Key key) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = values_.find(key);
    return found == values_.end() ? nullptr : found->second;
  }

  // In the order of the keys.
  std::vector<std::shared_ptr<Value>> All() const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<std::shared_ptr<Value>> all;
    for (const auto& [key, value] : values_) all.push_back(value);
    return all;
  }

 private:
  mutable std::mutex mutex_;
  std::map<Key, std::shared_ptr<Value>> values_;  // guarded by mutex_
};

// What lives in the process. The C interface carries no context but a handle, so there is one
// registry for all hosts. Extensions and instances share one sequence of numbers, none is given
// twice: a handle that was mixed up or kept too long finds nothing. Thread-safe.
class Registry {
 public:
  static Registry& Process();

  // Throws HostError when every number has been given.
  int32_t NewHandle();

  Living<XW_Extension, Extension> extensions;
  Living<XW_Instance, InstanceState> instances;  // the oldest first
  // Hosts hear of calls that cannot be tied to one of them.
  Living<const HostContext*, HostContext> hosts;
  // A library has one set of globals, so it serves one host at a time. By the loader's handle.
  Living<const void*, void> libraries;

 private:
  std::mutex mutex_;
  int32_t last_handle_ = 0;  // guarded by mutex_
};

}  // namespace orvane::extensions
