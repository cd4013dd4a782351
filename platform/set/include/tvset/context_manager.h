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
// the "last:source" (the tuner or the input that was watched last). Nothing is performed here: a
// task is recorded, and told to Observer::OnContextTask on the calling thread. Partner of the
// platform's app_context_manager functions. A restart of the set forgets everything. Any thread.
class TVSET_EXPORT ContextManager {
 public:
  static constexpr size_t kMaxRecorded = 1000;  // tasks; the oldest go first

  explicit ContextManager(EventHub& events);  // borrowed

  void Initialize();
  int initialized() const;  // how often since the set's start
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
