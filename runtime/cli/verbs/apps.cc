// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <memory>
#include <string>

#include "base/json_fields.h"
#include "cli/output.h"
#include "cli/simulator.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

namespace {

struct ListedApplication {
  std::string id;
  std::string name;
  bool running = false;
  std::string state_name;
};
template <class Map>
void MapFields(Map& map, ListedApplication& app) {
  map("id", app.id);
  map("name", app.name);
  map("running", app.running);
  map.Optional("stateName", app.state_name);
}

struct ListedState {
  std::vector<ListedApplication> applications;
  std::string focused;
};
template <class Map>
void MapFields(Map& map, ListedState& state) {
  map.Optional("applications", state.applications);
  map.Optional("focused", state.focused);
}

ExitCode List(const Simulator& simulator, const SimulatorOptions& options) {
  const Json told = simulator.Call("state.get");
  const auto state = base::FromJson<ListedState>(told, "the state");
  if (options.json) {
    PrintJson(told.value("applications", Json()));
    return ExitCode::kDone;
  }
  for (const ListedApplication& app : state.applications) {
    std::printf("%c %-32s %-12s %s\n", app.id == state.focused ? '*' : ' ', app.id.c_str(),
                app.running ? app.state_name.c_str() : "not running", app.name.c_str());
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
