// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace bench {

// A worker thread that answers each request with nothing: what handing work to another thread and
// waiting for it costs at least. One caller at a time.
class ThreadHandOff {
 public:
  ThreadHandOff() : worker_([this] { Serve(); }) {}

  ~ThreadHandOff() {
    Set(State::kStop);
    worker_.join();
  }

  ThreadHandOff(const ThreadHandOff&) = delete;
  ThreadHandOff& operator=(const ThreadHandOff&) = delete;

  void GoAndReturn() {
    Set(State::kAsked);
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [this] { return state_ == State::kIdle; });
  }

 private:
  enum class State { kIdle, kAsked, kStop };

  void Set(State state) {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      state_ = state;
    }
    changed_.notify_all();
  }

  void Serve() {
    while (true) {
      {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this] { return state_ != State::kIdle; });
        if (state_ == State::kStop) {
          return;
        }
      }
      Set(State::kIdle);
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  State state_ = State::kIdle;  // guarded by mutex_
  std::thread worker_;          // last: it uses the others
};

}  // namespace bench
