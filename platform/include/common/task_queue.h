// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "common/export.h"
#include "common/worker.h"

namespace common {

// The process's queue for work that must not block the extension thread. All libraries of the
// process share it and its one worker, so that jobs never overlap, and a long one delays all
// others. Any thread. Partner of Extension, whose destruction waits for the task that runs.
class WEBAPI_EXPORT TaskQueue {
 public:
  // The one of the process, made by the first call and destroyed with the process's other static
  // objects: what is queued then still runs.
  static TaskQueue& GetInstance();

  TaskQueue(const TaskQueue&) = delete;
  TaskQueue& operator=(const TaskQueue&) = delete;

  // Runs `work` and then `response` on the worker, each with `data`, and then `finalizer`. What
  // they refer to lives until then: the caller counts its tasks and waits for them. Throws as
  // Worker::add_job does. The template's body is compiled into the library that uses it
  // (task-queue.h there).
  template <class T>
  void Queue(const std::function<void(const std::shared_ptr<T>&)>& work,
             const std::function<void(const std::shared_ptr<T>&)>& response,
             const std::function<void()>& finalizer, const std::shared_ptr<T>& data);

  // As Worker's: returns when the task that runs now is over, finaliser and all; at once when none
  // does. Not for a task to call.
  void WaitForCurrent();

 private:
  TaskQueue();
  ~TaskQueue();

  // Starts its thread with the first task.
  Worker worker_;
};

}  // namespace common
