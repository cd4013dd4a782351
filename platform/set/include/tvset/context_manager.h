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
// platform's app_context_manager functions. Owned by Set; a restart forgets everything. Any thread.
class TVSET_EXPORT ContextManager {
 public:
  // Tasks; the oldest go first.
  static constexpr size_t kMaxRecorded = 1000;

  // Borrowed.
  explicit ContextManager(EventHub& events);

  // By a component that is going to ask. Counts, and is not undone but by Clear and a restart.
  void Initialize();
  // How often since the set's start.
  int initialized() const;
  // False before the first Initialize, and for a target or action that it does not know.
  bool RequestTask(const std::string& target, const std::string& action);
  // Those that were accepted and are kept, oldest first.
  std::vector<ContextTask> tasks() const;
  // As at the set's start: the tasks are forgotten, and so is that anybody has initialised it.
  // Tells nobody.
  void Clear();

 private:
  EventHub& events_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  int initialized_ = 0;
  std::vector<ContextTask> tasks_;
};

}  // namespace tvset
