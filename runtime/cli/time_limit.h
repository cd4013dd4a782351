// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace orvane::cli {

// The time that a run may take, counted from construction. The page's loop ends by itself at the
// limit; a script that never returns to the loop cannot be stopped from outside, nor can an
// extension that never finishes: a little later the process is ended, with a message and
// ExitCode::kTimeLimit. One thread, the page thread, uses it.
class TimeLimit {
 public:
  // `closing` is the time that what remains after BeginClosing may take.
  TimeLimit(std::chrono::milliseconds limit, std::chrono::milliseconds closing);
  ~TimeLimit();
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

  std::string seconds() const;             // of the limit, for people
  std::chrono::milliseconds left() const;  // never below 0

  // The scripts have done their part; what remains is closing the page.
  void BeginClosing();

 private:
  using TimePoint = std::chrono::steady_clock::time_point;

  void Watch();
  [[noreturn]] void EndProcess() const;

  const std::chrono::milliseconds limit_;
  const std::chrono::milliseconds closing_time_;
  const TimePoint end_;
  std::mutex mutex_;
  std::condition_variable changed_;
  TimePoint last_call_;   // guarded by mutex_; when the process is ended
  bool closing_ = false;  // guarded by mutex_
  bool over_ = false;     // guarded by mutex_
  std::thread watcher_;
};

}  // namespace orvane::cli
