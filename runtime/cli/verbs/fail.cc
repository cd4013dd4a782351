// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <boost/algorithm/string/split.hpp>

#include "cli/output.h"
#include "cli/verbs/simulator_verb.h"
#include "television/set_fields.h"

namespace orvane::cli {

namespace {

struct FailOptions : SimulatorOptions {
  std::string function;
  std::optional<int> code;
  bool once = false;
  bool clear = false;

  void Check() const;
};

struct ListedState {
  std::vector<tvset::Fault> faults;
};
template <class Map>
void MapFields(Map& map, ListedState& state) {
  map.Optional("faults", state.faults);
}

void PrintFaults(const Json& told, bool json) {
  const auto state = base::FromJson<ListedState>(told, "the state");
  if (json) return PrintJson(told.value("faults", Json()));
  for (const tvset::Fault& fault : state.faults) {
    const bool once = fault.mode == tvset::FaultMode::kOnce;
    std::printf("%s %d %s\n", fault.function.c_str(), fault.code, once ? "once" : "always");
  }
}

void FailOptions::Check() const {
  if (clear && (code || once)) {
    throw CommandError(
        "--clear ends faults: it takes a FUNCTION or nothing, no CODE and no --once.");
  }
  if (once && function.empty()) {
    throw CommandError("--once needs a function and its code: orvane fail FUNCTION CODE --once.");
  }
  if (clear || function.empty() || code) return;
  // Perhaps as the option --fail has it: FUNCTION=CODE:once.
  std::vector<std::string> parts;
  boost::split(parts, function, [](char c) { return c == '=' || c == ':'; });
  const std::string given = parts.size() > 1 && !parts[1].empty() ? parts[1] : "-1";
  throw CommandError("with which code is " + parts[0] +
                     " to fail? Write orvane fail FUNCTION CODE, such as orvane fail " + parts[0] +
                     " " + given + (parts.size() > 2 ? " --once" : "") + ".");
}

ExitCode Fail(const Simulator& simulator, const FailOptions& options) {
  if (options.clear) {
    const bool all = options.function.empty();
    simulator.Call("faults.clear", {{"function", all ? Json() : Json(options.function)}});
  } else if (options.code) {
    simulator.Call("faults.set", {{"function", options.function},
                                  {"code", *options.code},
                                  {"mode", options.once ? "once" : "always"}});
  }
  const bool lists = !options.clear && !options.code;
  if (lists || options.json) {
    PrintFaults(simulator.Call("state.get"), options.json);
  }
  return ExitCode::kDone;
}

}  // namespace

void AddFailVerb(CLI::App& command, Run& run) {
  const auto verb = AddSimulatorVerb<FailOptions>(command, run, "fail",
                                                  "Make a function of the platform fail", Fail);
  FailOptions& options = verb.options;
  verb.app
      .add_option("FUNCTION", options.function,
                  "Such as vconf_set_str; without it: list those that fail")
      ->type_name("");
  verb.app.add_option("CODE", options.code, "What it answers from now on; not 0")->type_name("");
  verb.app.add_flag("--once", options.once, "Its next call only");
  verb.app.add_flag("--clear", options.clear, "Let FUNCTION, or all of them, work again");
  AddSimulatorOptions(verb.app, options, "Print the functions that fail then, as JSON");
  verb.app.footer(
      "Exit status: 0 done, 1 refused (there is no such function, or the code is 0),\n"
      "2 wrongly used, 4 no simulator runs.");
}

}  // namespace orvane::cli
