// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "cli/simulator.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

// What the verbs that talk to a simulator have in common.
struct SimulatorOptions {
  std::string state_folder;
  bool json = false;

  void Check() const {}  // throws CommandError for what cannot be meant
};
void AddSimulatorOptions(CLI::App& verb, SimulatorOptions& options, const char* json_help);

// Runs `work` with the simulator of the folder. Throws CommandError when there is none, and for an
// answer that has another form than the verb expects.
ExitCode WithSimulator(const std::string& state_folder,
                       const std::function<ExitCode(const Simulator&)>& work);

// Adds a verb whose `Options` are SimulatorOptions and more; they may have a Check of their own.
template <class Options>
Verb<Options> AddSimulatorVerb(CLI::App& command, Run& run, const char* name, const char* help,
                               ExitCode (*work)(const Simulator&, const Options&)) {
  const auto verb = AddVerb<Options>(command, run, name, help, [work](const Options& options) {
    options.Check();
    return WithSimulator(options.state_folder,
                         [&](const Simulator& simulator) { return work(simulator, options); });
  });
  verb.app.group("Verbs for a running simulator");
  return verb;
}

}  // namespace orvane::cli
