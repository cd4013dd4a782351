// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <string>

#include "cli/output.h"
#include "cli/verbs/simulator_verb.h"

namespace orvane::cli {

namespace {

ExitCode List(const Simulator& simulator, const SimulatorOptions& options) {
  const Json state = simulator.Call("state.get");
  const Json applications = state.value("applications", Json());
  if (options.json) {
    PrintJson(applications);
    return ExitCode::kDone;
  }
  for (const Json& app : applications) {
    const std::string state_name =
        app.at("running").get<bool>() ? TextOf(app.value("stateName", Json())) : "not running";
    std::printf("%c %-32s %-12s %s\n", app.at("id") == state.value("focused", Json()) ? '*' : ' ',
                TextOf(app.at("id")).c_str(), state_name.c_str(), TextOf(app.at("name")).c_str());
  }
  return ExitCode::kDone;
}

}  // namespace

void AddAppsVerb(CLI::App& command, Run& run) {
  const auto verb =
      AddSimulatorVerb<SimulatorOptions>(command, run, "apps", "List the set's applications", List);
  AddSimulatorOptions(verb.app, verb.options, "Print them as a JSON array");
  verb.app.footer(
      "One line each: a star when it has the focus, id, state and name.\n"
      "Exit status: 0 listed, 4 no simulator runs.");
}

}  // namespace orvane::cli
