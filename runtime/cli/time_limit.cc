// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/time_limit.h"

#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "cli/exit_code.h"
#include "cli/output.h"

namespace orvane::cli {

namespace {

// For the loop to come back from the turn that it is in.
constexpr std::chrono::milliseconds kGrace{1000};

}  // namespace

TimeLimit::TimeLimit(std::chrono::milliseconds limit, std::chrono::milliseconds closing)
    : limit_(limit),
      closing_time_(closing),
      end_(std::chrono::steady_clock::now() + limit),
      last_call_(end_ + kGrace),
      watcher_([this] { Watch(); }) {}

TimeLimit::~TimeLimit() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    over_ = true;
  }
  changed_.notify_all();
  watcher_.join();
}

std::chrono::milliseconds TimeLimit::left() const {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
      end_ - std::chrono::steady_clock::now());
  return std::max(left, std::chrono::milliseconds(0));
}

void TimeLimit::BeginClosing() {
  const std::lock_guard<std::mutex> lock(mutex_);
  closing_ = true;
  last_call_ = std::chrono::steady_clock::now() + closing_time_;
  changed_.notify_all();
}

void TimeLimit::Watch() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!over_) {
    if (std::chrono::steady_clock::now() >= last_call_) EndProcess();
    changed_.wait_until(lock, last_call_);
  }
}

std::string TimeLimit::seconds() const {
  std::ostringstream text;
  text << static_cast<double>(limit_.count()) / 1000;
  return text.str();
}

void TimeLimit::EndProcess() const {
  Complain(closing_
               ? "stopped: an extension did not finish its work when the page was closed."
               : "stopped: a script was still running after " + seconds() +
                     " s. Is there a loop that never ends? Allow more with --timeout SECONDS.");
  // Neither the script nor what waits for it can be asked to end.
  _exit(static_cast<int>(ExitCode::kTimeLimit));
}

}  // namespace orvane::cli
