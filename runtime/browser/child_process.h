// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace orvane::browser {

// The path of a program on the PATH; empty when there is none of the names. Any thread.
std::string FindProgram(const std::vector<std::string>& names);

// A process of this one, ended with it at the latest. Its standard input is empty, its output is
// dropped. One thread at a time.
class ChildProcess {
 public:
  // The child's descriptor, and this process's that it becomes. Descriptors below 3 are not for it.
  using Descriptors = std::vector<std::pair<int, int>>;

  // `arguments` begin with the program's path. Throws BrowserError.
  ChildProcess(const std::vector<std::string>& arguments, const Descriptors& descriptors);
  // Stops it.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t pid() const { return pid_; }
  bool running();

  // Starts a program that is nobody's to end: it outlives this process, and is not waited for.
  // False when it cannot be started.
  static bool StartAlone(const std::vector<std::string>& arguments);

  // Asks it to end, waits for `patience`, then kills it. Returns when it is gone.
  void Stop(std::chrono::milliseconds patience);

 private:
  bool WaitUntil(std::chrono::steady_clock::time_point deadline);

  pid_t pid_ = 0;
  bool reaped_ = false;
};

}  // namespace orvane::browser
