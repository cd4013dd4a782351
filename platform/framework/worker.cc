// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/worker.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "guard.h"

namespace common {

namespace {

struct Task {
  std::function<void()> job;
  std::function<void()> finalizer;
};

void RunAndRelease(Task task) {
  Guarded("Worker job", task.job);
  // What the job holds goes before the finaliser says that the task is over.
  task.job = nullptr;
  if (task.finalizer) {
    Guarded("Worker finalizer", task.finalizer);
  }
}

}  // namespace

class Worker::Queue {
 public:
  Queue() = default;
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;

  ~Queue() {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      closing_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) {
      thread_.join();
    }
  }

  void Add(Task task) {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      if (!thread_.joinable()) {
        thread_ = std::thread([this] { Run(); });
      }
      tasks_.push_back(std::move(task));
    }
    changed_.notify_all();
  }

  void WaitForCurrent() {
    std::unique_lock<std::mutex> lock(mutex_);
    const uint64_t current = started_;
    changed_.wait(lock, [this, current] { return finished_ >= current; });
  }

 private:
  void Run() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (true) {
      changed_.wait(lock, [this] { return closing_ || !tasks_.empty(); });
      if (tasks_.empty()) {
        return;
      }
      RunFirst(lock);
    }
  }

  void RunFirst(std::unique_lock<std::mutex>& lock) {
    {
      Task task = std::move(tasks_.front());
      tasks_.pop_front();
      ++started_;
      lock.unlock();
      RunAndRelease(std::move(task));
    }
    lock.lock();
    finished_ = started_;
    changed_.notify_all();
  }

  std::mutex mutex_;
  // Notified at each change of what mutex_ guards.
  std::condition_variable changed_;
  // Guarded by mutex_.
  std::deque<Task> tasks_;
  uint64_t started_ = 0;
  uint64_t finished_ = 0;
  bool closing_ = false;
  std::thread thread_;
};

Worker::Worker() : queue_(std::make_unique<Queue>()) {}

Worker::~Worker() = default;

void Worker::WaitForCurrent() { queue_->WaitForCurrent(); }

void Worker::add_job(const std::function<void()>& job, const std::function<void()>& finalizer) {
  if (!job) {
    throw std::bad_function_call();
  }
  queue_->Add(Task{job, finalizer});
}

}  // namespace common
