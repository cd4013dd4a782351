// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>

#include "base/json.h"
#include "cli/exit_code.h"
#include "cli/http_client.h"
#include "server/simulator/run_options.h"

namespace orvane::cli {

// No simulator runs, or it does not answer.
class NoSimulator : public CommandError {
 public:
  explicit NoSimulator(const std::string& what) : CommandError(what, ExitCode::kNoSimulator) {}
};

// Nobody listens any more where the simulator was.
class SimulatorGone : public NoSimulator {
 public:
  using NoSimulator::NoSimulator;
};

// The simulator that runs on a state folder, as `orvane run` started it. Each call is a request of
// its own; nothing is kept open between them.
class Simulator {
 public:
  // Empty: the default folder. Throws NoSimulator.
  explicit Simulator(const std::string& state_folder);

  // The method's result; the names are those of the simulator's own page. Throws NoSimulator, and
  // CommandError with the simulator's own text for what it refuses.
  Json Call(const std::string& method, const Json& parameters = Json::object()) const;

  // What it tells from now on, as messages {"events":[{"name","data"},…]}. Throws NoSimulator.
  std::unique_ptr<MessageStream> OpenEvents() const;

  pid_t pid() const { return run_.pid; }
  bool EndsWithin(std::chrono::milliseconds patience) const;  // true: its process is gone

 private:
  bool runs() const;
  template <class Work>
  auto Reach(const Work& work) const;

  std::filesystem::path folder_;
  server::RunAddresses run_;
  LocalAddress address_;
};

}  // namespace orvane::cli
