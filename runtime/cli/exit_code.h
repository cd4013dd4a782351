// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace orvane::cli {

// What the process answers its caller; part of the command's interface.
enum class ExitCode {
  kDone = 0,
  kScriptError = 1,  // an uncaught exception, a method that failed, something that is not there
  kUsage = 2,        // something given on the command line cannot be used
  kTimeLimit = 3,    // the page was still busy at the time limit
  kNoSimulator = 4,  // no simulator runs on the state folder, or it does not answer
};

// Something given on the command line cannot be used; what() says which and what to do.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::cli
