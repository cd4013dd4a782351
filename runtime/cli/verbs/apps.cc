// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <memory>
#include <string>

#include "cli/json_output.h"
#include "cli/simulator.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

using picojson::value;

namespace {

// "*" before the application that has the focus.
void PrintLine(const value& app, const std::string& focused) {
  const std::string id = Member(app, "id").to_str();
  const bool runs = Member(app, "running").is<bool>() && Member(app, "running").get<bool>();
  const std::string state = runs ? Member(app, "stateName").to_str() : "not running";
  std::printf("%c %-32s %-12s %s\n", id == focused ? '*' : ' ', id.c_str(), state.c_str(),
              Member(app, "name").to_str().c_str());
}

ExitCode List(const Simulator& simulator, const SimulatorOptions& options) {
  const value state = simulator.Call("state.get");
  const value& applications = Member(state, "applications");
  if (options.json) {
    PrintJson(applications);
    return ExitCode::kDone;
  }
  if (!applications.is<picojson::array>()) return ExitCode::kDone;
  for (const value& app : applications.get<picojson::array>()) {
    PrintLine(app, Member(state, "focused").to_str());
  }
  return ExitCode::kDone;
}

}  // namespace

void AddAppsVerb(CLI::App& command, Run& run) {
  const auto options = std::make_shared<SimulatorOptions>();
  CLI::App* const verb = command.add_subcommand("apps", "List the set's applications");
  AddSimulatorOptions(*verb, *options, "Print them as a JSON array");
  verb->footer(
      "One line each: a star when it has the focus, id, state and name.\n"
      "Exit status: 0 listed, 4 no simulator runs.");
  verb->callback([options, &run] {
    run = [options] {
      return WithSimulator(*options,
                           [&](const Simulator& simulator) { return List(simulator, *options); });
    };
  });
}

}  // namespace orvane::cli
