// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include "cli/output.h"
#include "cli/verbs/simulator_verb.h"

namespace orvane::cli {

namespace {

struct KeyOptions : SimulatorOptions {
  std::string name;
  bool is_long = false;
};

ExitCode Press(const Simulator& simulator, const KeyOptions& options) {
  const Json told =
      simulator.Call("keys.press", {{"name", options.name}, {"long", options.is_long}});
  if (options.json) {
    PrintJson(told);
  } else {
    std::printf("%s.\n", TextOf(told.value("text", Json())).c_str());
  }
  return told.value("delivered", false) ? ExitCode::kDone : ExitCode::kScriptError;
}

}  // namespace

void AddKeyVerb(CLI::App& command, Run& run) {
  const auto verb = AddSimulatorVerb<KeyOptions>(
      command, run, "key", "Press a key of the remote control; say where it went and why", Press);
  verb.app
      .add_option("NAME", verb.options.name,
                  "The key, as pages call it (ArrowLeft, ColorF0Red) or by its symbol\n"
                  "(Left, XF86Red, red)")
      ->required()
      ->type_name("");
  verb.app.add_flag("--long", verb.options.is_long, "Hold it down for a moment");
  AddSimulatorOptions(verb.app, verb.options, "Print where it went as JSON");
  verb.app.footer(
      "Exit status: 0 an application received the key, 1 none did or there is no such key,\n"
      "4 no simulator runs.");
}

}  // namespace orvane::cli
