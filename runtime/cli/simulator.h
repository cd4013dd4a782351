// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

#include "base/json.h"
#include "cli/exit_code.h"
#include "cli/http_client.h"

namespace orvane::cli {

// No simulator runs, or it does not answer; what() says what to do.
class NoSimulator : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Nobody listens any more where the simulator was.
class SimulatorGone : public NoSimulator {
 public:
  using NoSimulator::NoSimulator;
};

// The simulator does not do what was asked; what() is its own text.
class SimulatorRefusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The simulator that runs on a state folder, as `orvane run` started it. Each call is a request of
// its own; nothing is kept open between them.
class Simulator {
 public:
  // Empty: the default folder. Throws NoSimulator.
  explicit Simulator(const std::string& state_folder);

  // The method's result; the names are those of the simulator's own page. Throws SimulatorRefusal
  // or NoSimulator.
  Json Call(const std::string& method, const Json& parameters = Json::object()) const;

  // What it tells from now on, as messages {"events":[{"name","data"},…]}. Throws NoSimulator.
  std::unique_ptr<MessageStream> OpenEvents() const;

  pid_t pid() const { return pid_; }
  bool EndsWithin(std::chrono::milliseconds patience) const;  // true: its process is gone

 private:
  bool ReadRecord(const std::filesystem::path& file);  // false: it does not say where
  bool runs() const;
  template <class Work>
  auto Reach(const Work& work) const;

  std::filesystem::path folder_;
  LocalAddress address_;
  std::string token_;
  pid_t pid_ = 0;
};

// What the verbs that talk to a simulator have in common.
struct SimulatorOptions {
  std::string state_folder;
  bool json = false;
};
void AddSimulatorOptions(CLI::App& verb, SimulatorOptions& options, const std::string& json_help);

// Runs `work` with the simulator; a refusal, an answer of another form and a missing simulator are
// printed and give their exit codes.
ExitCode WithSimulator(const SimulatorOptions& options,
                       const std::function<ExitCode(const Simulator&)>& work);

}  // namespace orvane::cli
