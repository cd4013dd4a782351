// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tvset/export.h"

namespace tvset {

// How long a fault stays from when it was set: for the next call of the function, or until it is
// cleared.
enum class FaultMode { kOnce, kAlways };

// What becomes of the calls of one function.
struct Fault {
  // One of FaultTable::functions() or accesses().
  std::string function;
  // What the call answers; for an access, the errno value. Never 0.
  int code = 0;
  FaultMode mode = FaultMode::kAlways;
  // How many calls failed by it.
  uint64_t hits = 0;
};

// Makes platform functions fail on demand, for tests and for people: the one switch of both. Every
// platform function asks it first. One that is to fail does nothing but answer: one with an int
// result answers the code, one with a pointer result NULL and one with an enum result its "invalid"
// value, whatever the code.
//
// A change, also of `hits`, is told to Observer::OnFaultChanged on the calling thread. A restart of
// the set ends all faults. Owned by Set. Any thread.
class TVSET_EXPORT FaultTable {
 public:
  // Replaces the function's earlier fault. Throws SetError for code 0, which would be success, and
  // for a name that is in neither list below; the text then lists names that are near. `hits` are
  // those of an earlier process.
  void Fail(const std::string& function, int code, FaultMode mode, uint64_t hits = 0);
  // Throws as Fail for a name in neither list.
  void Clear(const std::string& function);
  // Ends every fault; each is told by itself.
  void ClearAll();
  // By name.
  std::vector<Fault> list() const;

  // For the platform's functions: the code with which this call of the function is to fail. One
  // relaxed load when no fault is set.
  std::optional<int> Take(const char* function) {
    if (count_.load(std::memory_order_relaxed) == 0) return std::nullopt;
    return TakeSlowly(function);
  }

  // Every platform function, by name. Each stays as it is while the process lives.
  static const std::vector<std::string>& functions();
  // What else can be made to fail, each with an errno value as the code: "file:" and the name of
  // one of the set's files, see SetFiles, and "prctl" for the kernel's marks, see KernelMarkers.
  static const std::vector<std::string>& accesses();

 private:
  friend class Set;
  // As Take, under the lock: counts the hit, and ends a fault that was for one call.
  std::optional<int> TakeSlowly(const char* function);
  // As ClearAll, and tells nobody.
  void Reset();
  void Changed(const std::string& function) const;

  // Fixed after construction; called with no lock held.
  std::function<void(const std::string& function)> changed_;
  std::atomic<int> count_{0};
  mutable std::mutex mutex_;
  std::unordered_map<std::string, Fault> faults_;  // guarded by mutex_
};

}  // namespace tvset
