// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/task_queue.h"

namespace common {

TaskQueue& TaskQueue::GetInstance() {
  static TaskQueue queue;
  return queue;
}

void TaskQueue::WaitForCurrent() { worker_.WaitForCurrent(); }

TaskQueue::TaskQueue() = default;

TaskQueue::~TaskQueue() = default;

}  // namespace common
