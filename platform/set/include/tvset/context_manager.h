// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

// The television's context service: performs actions on targets, of which it knows one, to "launch"
// the "last:source". Any thread.
class TVSET_EXPORT ContextManager {
 public:
  static constexpr size_t kMaxRecorded = 1000;

  explicit ContextManager(EventHub& events);

  void Initialize();
  int initialized() const;  // how often
  // False before the first Initialize, and for a target or action that it does not know.
  bool RequestTask(const std::string& target, const std::string& action);
  std::vector<ContextTask> tasks() const;  // those accepted, the newest, oldest first
  void Clear();

 private:
  EventHub& events_;
  mutable std::mutex mutex_;
  int initialized_ = 0;             // guarded by mutex_
  std::vector<ContextTask> tasks_;  // guarded by mutex_
};

}  // namespace tvset
