// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdio.h>

#include <string>

namespace extension::orvane {

// A shell command and the read end of its output, both owned. It lives on the stack of the one
// thread that uses it. Destruction closes the pipe and waits, without a bound, for the command to
// end; its exit status is not looked at.
class PipeWrapper {
 public:
  // Starts the command in the system's shell. Does not throw: a command that is empty or that
  // cannot be started is logged. One that starts and prints nothing is no failure here.
  explicit PipeWrapper(const std::string& command);
  ~PipeWrapper();

  // Two owners would close the same pipe twice.
  PipeWrapper(const PipeWrapper&) = delete;
  PipeWrapper& operator=(const PipeWrapper&) = delete;

  // The command's output, to read and not to close; null when it was not started.
  FILE* getPipe();

 private:
  FILE* pipe;
};

}  // namespace extension::orvane
