// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <memory>

#include "base/json_fields.h"
#include "cli/output.h"
#include "cli/simulator.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

namespace {

struct KeyOptions {
  SimulatorOptions simulator;
  std::string name;
  bool is_long = false;
};

// What became of a press.
struct KeyOutcome {
  bool delivered = false;
  std::string text;
};
template <class Map>
void MapFields(Map& map, KeyOutcome& outcome) {
  map.Optional("delivered", outcome.delivered);
  map.Optional("text", outcome.text);
}

ExitCode Press(const Simulator& simulator, const KeyOptions& options) {
  const Json told =
      simulator.Call("keys.press", {{"name", options.name}, {"long", options.is_long}});
  const auto outcome = base::FromJson<KeyOutcome>(told, "the outcome");
  if (options.simulator.json) {
    PrintJson(told);
  } else {
    std::printf("%s.\n", outcome.text.c_str());
  }
  return outcome.delivered ? ExitCode::kDone : ExitCode::kScriptError;
}

}  // namespace

void AddKeyVerb(CLI::App& command, Run& run) {
  const auto options = std::make_shared<KeyOptions>();
  CLI::App* const verb =
      command.add_subcommand("key", "Press a key of the remote control; say where it went and why");
  verb->add_option("NAME", options->name,
                   "The key, as pages call it (ArrowLeft, ColorF0Red) or by its symbol\n"
                   "(Left, XF86Red, red)")
      ->required()
      ->type_name("");
  verb->add_flag("--long", options->is_long, "Hold it down for a moment");
  AddSimulatorOptions(*verb, options->simulator, "Print where it went as JSON");
  verb->footer(
      "Exit status: 0 an application received the key, 1 none did or there is no such key,\n"
      "4 no simulator runs.");
  verb->callback([options, &run] {
    run = [options] {
      return WithSimulator(options->simulator,
                           [&](const Simulator& simulator) { return Press(simulator, *options); });
    };
  });
}

}  // namespace orvane::cli
