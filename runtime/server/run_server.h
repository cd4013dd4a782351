// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "server/simulator/run_options.h"
#include "server/web/run_error.h"

namespace orvane::server {

// `orvane run`: serves an application to browsers, with the library behind it and the simulator
// beside it. Owns the set process. Run() and the destructor belong to one thread.
class RunServer {
 public:
  explicit RunServer(RunOptions options);
  ~RunServer();
  RunServer(const RunServer&) = delete;
  RunServer& operator=(const RunServer&) = delete;

  // Serves until Stop() or until the process is asked to end (SIGINT, SIGTERM); then ends what it
  // started, within a few seconds. Throws RunError.
  void Run();

  void Stop();  // from any thread

 private:
  class Runner;
  const std::unique_ptr<Runner> runner_;
};

}  // namespace orvane::server
