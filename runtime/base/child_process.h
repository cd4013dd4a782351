// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvane::base {

// How a process ended: by a signal, or else with an exit code.
struct ProcessEnd {
  int signal = 0;
  int exit_code = 0;
};

// The path of a program on the PATH; empty when there is none of the names. Any thread.
std::string FindProgram(const std::vector<std::string>& names);

// A process that this one started, and ends: destruction kills it and its own children if it still
// runs, and waits for it. One thread at a time.
class ChildProcess {
 public:
  // Which descriptor of this process becomes which of the child's. Every other one is closed there;
  // a standard stream that is not among them is /dev/null.
  using Descriptors = std::vector<std::pair<int, int>>;

  // `arguments` begin with the program. Throws std::system_error when it cannot be started.
  ChildProcess(const std::vector<std::string>& arguments, const Descriptors& descriptors);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t pid() const { return pid_; }
  // Nothing while it runs; does not wait.
  std::optional<ProcessEnd> end();
  // Waits for its end; false: it runs still.
  bool Wait(std::chrono::milliseconds patience);
  void Signal(int signal);  // nothing happens once it has ended
  // Asks it to end, waits for `patience`, then kills it. Returns when it is gone.
  void Stop(std::chrono::milliseconds patience);

  // Starts a program that is nobody's to end: it outlives this process, and is not waited for.
  // False when it cannot be started.
  static bool StartAlone(const std::vector<std::string>& arguments);

 private:
  void Kill();

  pid_t pid_ = -1;
  std::optional<ProcessEnd> end_;
};

// "it was killed by signal 6 (Aborted)", "it ended with exit code 3".
std::string Describe(const ProcessEnd& end);

}  // namespace orvane::base
