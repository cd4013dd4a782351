// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "common/json.h"
#include "orvane/CommonUtil.h"
#include "orvane/orvane_resource.h"
#include "orvane/orvane_timermanager.h"

namespace extension::orvane {

class OrvaneInstance;

// How many tasks of a manager are not yet finalised. Its destruction waits until there is none.
struct TaskCounter {
  ~TaskCounter();

  // Blocks until the count is 0.
  void WaitUntilIdle();

  // Callable from any thread. A task's end may be counted before its start.
  void Add(int32_t change);

  std::mutex mutex;
  std::condition_variable cond;
  // Guarded by mutex.
  int32_t count = 0;
};

// Runs an instance's slow requests on the process's task worker and posts what they came to, with
// the page's "callbackId", through the instance.
//
// The instance holds it by value. Construction, destruction and the handlers run on the extension
// thread; the work of a task, its response and its finaliser run on the worker, one task at a time,
// so that what tasks share needs no lock. Destruction clears the published profiling record and
// blocks until every task is finalised: no task outlives the instance that it posts to.
class OrvaneManager {
 public:
  // Does not own `instance`, which outlives it.
  explicit OrvaneManager(OrvaneInstance* instance);
  ~OrvaneManager();

  OrvaneManager(const OrvaneManager&) = delete;
  OrvaneManager& operator=(const OrvaneManager&) = delete;

  // Each answers a missing argument at once, in `out`, and otherwise leaves `out` alone and queues
  // a task; a "callbackId" that is no number ends the process. What is posted is named below; each
  // failure is posted as 9999 with a text.

  // {"cpuUsage": percent of all processors, at least 1}; 0 for a measurement that failed.
  void GetCpuStat(const picojson::value& args, picojson::object& out);

  // {"memoryUsage": whole MiB}.
  void GetMemoryStat(const picojson::value& args, picojson::object& out);

  // {}. "state", a number of which the fraction is cut: 0 holds the screen saver off, every other
  // gives it back. Asking for what is so already succeeds.
  void SetScreenSaver(const picojson::value& args, picojson::object& out);

  // {}. "label", a string: published, timed and handed to the kernel; an empty one clears the
  // record and the times.
  void RecordProfiling(const picojson::value& args, picojson::object& out);

 private:
  using Result = std::shared_ptr<picojson::value>;
  using Work = std::function<void(const Result&)>;

  // Hands the task over and only then counts it as pending. `name`, a literal, is what the log
  // calls it when it is finalised.
  void QueueTask(const char* name, double callback_id, const Work& work);

  // Adds the callback id to what the work came to, unless the work set one, and posts it.
  void Respond(double callback_id, const Result& result);

  // Fixed after construction.
  OrvaneInstance* instance_;
  std::unique_ptr<TaskCounter> pending_;

  // Used by tasks alone, until none is pending.
  std::unique_ptr<OrvaneResource> resource_;
  std::unique_ptr<std::vector<DebugPointInfo>> debug_points_;
  std::unique_ptr<TimerManager> timer_;
};

}  // namespace extension::orvane
