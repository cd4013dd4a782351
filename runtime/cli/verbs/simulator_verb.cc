// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/verbs/simulator_verb.h"

namespace orvane::cli {

void AddSimulatorOptions(CLI::App& verb, SimulatorOptions& options, const char* json_help) {
  verb.add_option("--state", options.state_folder,
                  "Folder of the set that orvane run has started.\n"
                  "Without it: $ORVANE_STATE, else ~/.local/state/orvane")
      ->type_name("DIR");
  verb.add_flag("--json", options.json, json_help);
}

ExitCode WithSimulator(const std::string& state_folder,
                       const std::function<ExitCode(const Simulator&)>& work) {
  std::string why;
  try {
    return work(Simulator(state_folder));
  } catch (const base::JsonError& error) {
    why = error.what();
  } catch (const Json::exception& error) {
    why = error.what();
  }
  throw CommandError("the simulator answered in another form: " + why, ExitCode::kScriptError);
}

}  // namespace orvane::cli
