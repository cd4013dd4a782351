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

// What is alive of one kind, by key. Owned by the Registry. Thread-safe; what it returns is kept
// alive by the returned pointer, also when another thread removes it meanwhile. Nothing is called
// and nothing destroyed while the lock is held.
template <typename Key, typename Value>
class Living {
 public:
  // Makes it known under the key. False, and nothing done: the key is taken.
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

  // Null when the key is not known, or no longer.
  std::shared_ptr<Value> Find(Key key) const {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = values_.find(key);
    return found == values_.end() ? nullptr : found->second;
  }

  // As it is at this moment, in the order of the keys.
  std::vector<std::shared_ptr<Value>> All() const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<std::shared_ptr<Value>> all;
    for (const auto& [key, value] : values_) all.push_back(value);
    return all;
  }

 private:
  mutable std::mutex mutex_;
  // Guarded by mutex_.
  std::map<Key, std::shared_ptr<Value>> values_;
};

// What lives in the process. The C interface carries no context but a handle, so there is one
// registry for all hosts. Extensions and instances share one sequence of numbers, none is given
// twice: a handle that was mixed up or kept too long finds nothing. Thread-safe.
//
// Each entry is made and removed by the side that it stands for: an Extension by its Load and at
// its end, an instance by CreateInstance and when it dies, a host by its constructor and
// destructor, a library by LoadLibrary and its closer.
class Registry {
 public:
  // The one of the process. Never destroyed: threads of extensions may call until the very end.
  static Registry& Process();

  // The next number, from 1. Throws HostError when every number has been given.
  int32_t NewHandle();

  // From before XW_Initialize until after the shutdown callback.
  Living<XW_Extension, Extension>& extensions() { return extensions_; }
  // From before `created` until after `destroyed`; the oldest comes first.
  Living<XW_Instance, InstanceState>& instances() { return instances_; }
  // Hosts hear of calls that cannot be tied to one of them.
  Living<const HostContext*, HostContext>& hosts() { return hosts_; }
  // A library has one set of globals, so it serves one host at a time. By the loader's handle;
  // there is nothing to keep alive, so the values are null.
  Living<const void*, void>& libraries() { return libraries_; }

 private:
  Living<XW_Extension, Extension> extensions_;
  Living<XW_Instance, InstanceState> instances_;
  Living<const HostContext*, HostContext> hosts_;
  Living<const void*, void> libraries_;
  std::mutex mutex_;
  // Guarded by mutex_.
  int32_t last_handle_ = 0;
};

}  // namespace orvane::extensions
