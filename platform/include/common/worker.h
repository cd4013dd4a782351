// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "common/export.h"

namespace common {

// A thread that runs jobs one after the other, each followed by its finaliser, in the order of
// add_job. A job or a finaliser that throws is logged; the finaliser of a job that threw still
// runs, and the thread lives on. What a job holds is released before its finaliser runs.
// Destruction runs what is queued and joins the thread; it is not for a job to do. Partner of
// TaskQueue, which owns the process's one.
class WEBAPI_EXPORT Worker {
 public:
  Worker();
  ~Worker();

  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  // Callable from any thread, a job's included. The finaliser may be empty. Throws
  // std::bad_function_call for an empty job, and std::system_error when the thread, which the first
  // job starts, cannot be had.
  void add_job(const std::function<void()>& job, const std::function<void()>& finalizer);

  // Returns when the task that runs now is over, finaliser and all, and what it held is released;
  // at once when none runs. Not to be called from a job or a finaliser.
  void WaitForCurrent();

 private:
  class Queue;
  std::unique_ptr<Queue> queue_;
};

}  // namespace common
