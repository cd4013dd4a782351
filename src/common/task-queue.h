// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "common/logger.h"
#include "common/task_queue.h"

namespace common {

// The body of the framework's template: it is compiled into each library, so that the scope that it
// logs is this file's. Any thread may call it; it returns before the worker has begun.
//
// The job owns copies of what it needs, and the caller may let go of everything at once. An empty
// `work` or `response` raises std::bad_function_call on the worker, which logs it and runs the
// finaliser all the same.
template <class T>
void TaskQueue::Queue(const std::function<void(const std::shared_ptr<T>&)>& work,
                      const std::function<void(const std::shared_ptr<T>&)>& response,
                      const std::function<void()>& finalizer, const std::shared_ptr<T>& data) {
  LOG_SCOPE();
  worker_.add_job(
      [data, work, response] {
        work(data);
        response(data);
      },
      finalizer);
}

}  // namespace common
