// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>

namespace orvane::cli {

// What the process answers its caller; part of the command's interface.
enum class ExitCode {
  kDone = 0,
  kScriptError = 1,  // an uncaught exception, a method that failed, something that is not there
  kUsage = 2,        // something given on the command line cannot be used
  kTimeLimit = 3,    // the page was still busy at the time limit
  kNoSimulator = 4,  // no simulator runs on the state folder, or it does not answer
};

// The command cannot do what it was asked to; what() says why and what to do about it. The process
// ends with the code.
class CommandError : public std::runtime_error {
 public:
  explicit CommandError(const std::string& what, ExitCode exit_code = ExitCode::kUsage)
      : std::runtime_error(what), exit_code_(exit_code) {}
  ExitCode exit_code() const { return exit_code_; }

 private:
  ExitCode exit_code_;
};

}  // namespace orvane::cli
