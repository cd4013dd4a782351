// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "base/near_names.h"
#include "cli/output.h"
#include "cli/television_page.h"
#include "cli/verbs/verbs.h"

// js/call.js
extern "C" const char kCallScript[];

namespace orvane::cli {

namespace {

struct CallOptions : PageVerbOptions {
  bool show_console = false;
  std::string method;
  std::vector<std::string> arguments;  // JSON texts, not checked
};

// Each tells people what the script found, and what the command ends with for it.
ExitCode Print(const Json& text, ExitCode exit_code) {
  std::printf("%s\n", text.get<std::string>().c_str());
  return exit_code;
}

ExitCode RefuseArgument(const CallOptions& options, size_t index, const std::string& why) {
  Complain("argument " + std::to_string(index + 1) + " of " + options.method +
           " is not JSON: " + options.arguments.at(index) + " (" + why +
           "). A shell takes quotes away, so put single quotes around each argument, such as "
           "'\"CPU\"' or '[\"ColorF0Red\"]'.");
  return ExitCode::kUsage;
}

ExitCode RefuseMethod(const std::string& method, const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += "\n  " + name;
  Complain("dravelt.orvane has no method \"" + method + "\"." +
           base::DidYouMean(base::NearNames(method, names)) + " It has:" + list);
  return ExitCode::kUsage;
}

// The script kCallScript makes the call, and says by these functions what came of it.
ExitCode Call(const CallOptions& options) {
  std::optional<ExitCode>
      exit_code;  // empty until the method has answered; the first answer counts
  ConsolePrinter console(ConsolePrinter::Place::kBesideResult);
  TelevisionPage page(options, options.show_console ? &console : nullptr);
  page.page().DefineFunction("orvaneCommand.request", [&options](const std::string&) {
    return base::JsonText({{"method", options.method}, {"arguments", options.arguments}});
  });
  const auto define = [&page, &exit_code](const std::string& name, const auto& work) {
    page.page().DefineFunction("orvaneCommand." + name,
                               [&exit_code, work](const std::string& json) {
                                 if (!exit_code) exit_code = work(base::ParseJson(json));
                                 return std::string();
                               });
  };
  define("succeed", [](const Json& given) { return Print(given.at(0), ExitCode::kDone); });
  define("fail", [](const Json& given) { return Print(given.at(0), ExitCode::kScriptError); });
  define("refuseArgument",
         [&](const Json& given) { return RefuseArgument(options, given.at(0), given.at(1)); });
  define("refuseMethod",
         [&](const Json& given) { return RefuseMethod(options.method, given.at(0)); });
  const ExitCode ended = page.Run({{"call.js", kCallScript}});
  if (ended != ExitCode::kDone) return ended;
  if (!exit_code) Complain(options.method + " called none of its callbacks.");
  return exit_code.value_or(ExitCode::kScriptError);
}

}  // namespace

void AddCallVerb(CLI::App& command, Run& run) {
  const auto verb = AddVerb<CallOptions>(
      command, run, "call", "Call a method of dravelt.orvane; print its result or error as JSON",
      Call);
  CallOptions& options = verb.options;
  verb.app.add_option("METHOD", options.method, "Name of the method, such as getVersion")
      ->required()
      ->type_name("");
  verb.app
      .add_option("JSON", options.arguments,
                  "Arguments, each one JSON text; callbacks come from the command")
      ->type_name("");
  AddPageVerbOptions(verb.app, options);
  verb.app.add_flag("--console", options.show_console,
                    "Print what the script writes to its console, on the standard\nerror stream");
  verb.app.footer(
      "Prints the result, or what the callback got, as JSON on one line; null where there is "
      "none.\n"
      "When the method fails the line is its error, with code, name and message, and the command "
      "ends\n"
      "with 1; with 2 when something on the command line cannot be used, 3 at the time limit.\n\n"
      "Examples:\n"
      "  orvane call getVersion\n"
      "  orvane call generateKey '\"VolumeUp\"'\n"
      "  orvane call registerKey '[\"ColorF0Red\"]'\n"
      "  orvane call getSystemStat '\"MEMORY\"'");
}

}  // namespace orvane::cli
