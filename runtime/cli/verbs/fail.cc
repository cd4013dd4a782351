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

struct FailOptions {
  SimulatorOptions simulator;
  std::string function;
  int code = 0;
  bool has_code = false;
  bool once = false;
  bool clear = false;
};

struct ListedFault {
  std::string function;
  int code = 0;
  std::string mode;
};
template <class Map>
void MapFields(Map& map, ListedFault& fault) {
  map("function", fault.function);
  map("code", fault.code);
  map("mode", fault.mode);
}

struct ListedState {
  std::vector<ListedFault> faults;
};
template <class Map>
void MapFields(Map& map, ListedState& state) {
  map.Optional("faults", state.faults);
}

void PrintFaults(const Json& told, bool json) {
  const auto state = base::FromJson<ListedState>(told, "the state");
  if (json) return PrintJson(told.value("faults", Json()));
  for (const ListedFault& fault : state.faults) {
    std::printf("%s %d %s\n", fault.function.c_str(), fault.code, fault.mode.c_str());
  }
}

void CheckUse(const FailOptions& options) {
  if (options.clear && (options.has_code || options.once)) {
    throw UsageError("--clear ends faults: it takes a FUNCTION or nothing, no CODE and no --once.");
  }
  if (options.once && options.function.empty()) {
    throw UsageError("--once needs a function and its code: orvane fail FUNCTION CODE --once.");
  }
  if (options.clear || options.function.empty() || options.has_code) return;
  throw UsageError("with which code is " + options.function +
                   " to fail? Write orvane fail FUNCTION CODE, such as orvane fail " +
                   options.function + " -1.");
}

ExitCode Fail(const Simulator& simulator, const FailOptions& options) {
  if (options.clear) {
    const bool all = options.function.empty();
    simulator.Call("faults.clear", {{"function", all ? Json() : Json(options.function)}});
  } else if (options.has_code) {
    simulator.Call("faults.set", {{"function", options.function},
                                  {"code", options.code},
                                  {"mode", options.once ? "once" : "always"}});
  }
  const bool lists = !options.clear && !options.has_code;
  if (lists || options.simulator.json) {
    PrintFaults(simulator.Call("state.get"), options.simulator.json);
  }
  return ExitCode::kDone;
}

}  // namespace

void AddFailVerb(CLI::App& command, Run& run) {
  const auto options = std::make_shared<FailOptions>();
  CLI::App* const verb = command.add_subcommand("fail", "Make a function of the platform fail");
  verb->add_option("FUNCTION", options->function,
                   "Such as vconf_set_str; without it: list those that fail")
      ->type_name("");
  CLI::Option* const code =
      verb->add_option("CODE", options->code, "What it answers from now on; not 0")->type_name("");
  verb->add_flag("--once", options->once, "Its next call only");
  verb->add_flag("--clear", options->clear, "Let FUNCTION, or all of them, work again");
  AddSimulatorOptions(*verb, options->simulator, "Print the functions that fail then, as JSON");
  verb->footer(
      "Exit status: 0 done, 1 refused (there is no such function, or the code is 0),\n"
      "2 wrongly used, 4 no simulator runs.");
  verb->callback([options, code, &run] {
    options->has_code = code->count() > 0;
    run = [options] {
      CheckUse(*options);
      return WithSimulator(options->simulator,
                           [&](const Simulator& simulator) { return Fail(simulator, *options); });
    };
  });
}

}  // namespace orvane::cli
