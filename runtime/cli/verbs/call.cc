// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "base/near_names.h"
#include "cli/output.h"
#include "cli/page_verb_options.h"
#include "cli/television_page.h"
#include "cli/verbs/verbs.h"

// js/call.js
extern "C" const char kCallScript[];

namespace orvane::cli {

namespace {

struct CallOptions {
  PageVerbOptions page;
  bool show_console = false;
  std::string method;
  std::vector<std::string> arguments;  // JSON texts, not checked
};

// One call of one method. The script kCallScript makes it, and talks to this object through the
// functions that Define gives it.
class MethodCall {
 public:
  explicit MethodCall(const CallOptions& options) : options_(options) {}

  // The functions borrow this object, which must outlive the page.
  void Define(page::Page& page);

  bool answered() const { return exit_code_.has_value(); }
  ExitCode exit_code() const { return exit_code_.value_or(ExitCode::kScriptError); }

 private:
  void DefineOne(page::Page& page, const std::string& name,
                 void (MethodCall::*method)(const Json&));
  std::string Request() const;
  void Succeed(const Json& arguments) { Print(arguments, ExitCode::kDone); }
  void Fail(const Json& arguments) { Print(arguments, ExitCode::kScriptError); }
  void Print(const Json& arguments, ExitCode exit_code);
  void RefuseArgument(const Json& arguments);
  void RefuseMethod(const Json& arguments);

  const CallOptions& options_;
  std::optional<ExitCode>
      exit_code_;  // empty until the method has answered; the first answer counts
};

void MethodCall::Define(page::Page& page) {
  page.DefineFunction("orvaneCommand.request", [this](const std::string&) { return Request(); });
  DefineOne(page, "succeed", &MethodCall::Succeed);
  DefineOne(page, "fail", &MethodCall::Fail);
  DefineOne(page, "refuseArgument", &MethodCall::RefuseArgument);
  DefineOne(page, "refuseMethod", &MethodCall::RefuseMethod);
}

void MethodCall::DefineOne(page::Page& page, const std::string& name,
                           void (MethodCall::*method)(const Json&)) {
  page.DefineFunction("orvaneCommand." + name, [this, method](const std::string& arguments_json) {
    const Json arguments = base::ParseJson(arguments_json);
    if (!answered()) (this->*method)(arguments);
    return std::string();
  });
}

std::string MethodCall::Request() const {
  return base::JsonText({{"method", options_.method}, {"arguments", options_.arguments}});
}

void MethodCall::Print(const Json& arguments, ExitCode exit_code) {
  std::printf("%s\n", arguments.at(0).get<std::string>().c_str());
  exit_code_ = exit_code;
}

void MethodCall::RefuseArgument(const Json& arguments) {
  const auto index = arguments.at(0).get<size_t>();
  Complain("argument " + std::to_string(index + 1) + " of " + options_.method + " is not JSON: " +
           options_.arguments.at(index) + " (" + arguments.at(1).get<std::string>() +
           "). A shell takes quotes away, so put single quotes around each argument, such as "
           "'\"CPU\"' or '[\"ColorF0Red\"]'.");
  exit_code_ = ExitCode::kUsage;
}

void MethodCall::RefuseMethod(const Json& arguments) {
  std::vector<std::string> names;
  std::string list;
  for (const Json& name : arguments.at(0)) {
    names.push_back(name.get<std::string>());
    list += "\n  " + names.back();
  }
  Complain("dravelt.orvane has no method \"" + options_.method + "\"." +
           base::DidYouMean(base::NearNames(options_.method, names)) + " It has:" + list);
  exit_code_ = ExitCode::kUsage;
}

// Shows what the page writes to its console without disturbing the result on the standard output.
class SideConsole final : public page::ConsoleSink {
 public:
  void OnConsole(page::ConsoleLevel, const std::string& text) override {
    const std::string line = "console: " + text + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
  }
};

ExitCode Call(const CallOptions& options) {
  MethodCall call(options);
  SideConsole console;
  TelevisionPage page(options.page, options.show_console ? &console : nullptr);
  call.Define(page.page());
  if (const auto error = page.page().Evaluate(kCallScript, "call.js")) {
    page.errors().OnScriptError(*error);
    return ExitCode::kScriptError;
  }
  const bool idle = page.RunUntilIdle();
  if (page.errors().count() > 0) return ExitCode::kScriptError;
  if (!idle) return ExitCode::kTimeLimit;
  if (!call.answered()) Complain(options.method + " called none of its callbacks.");
  return call.exit_code();
}

}  // namespace

void AddCallVerb(CLI::App& command, Run& run) {
  CLI::App* verb = command.add_subcommand(
      "call", "Call a method of dravelt.orvane; print its result or error as JSON");
  verb->group("Verbs");
  const auto options = std::make_shared<CallOptions>();
  verb->add_option("METHOD", options->method, "Name of the method, such as getVersion")
      ->required()
      ->type_name("");
  verb->add_option("JSON", options->arguments,
                   "Arguments, each one JSON text; callbacks come from the command")
      ->type_name("");
  AddPageVerbOptions(*verb, options->page);
  verb->add_flag("--console", options->show_console,
                 "Print what the script writes to its console, on the standard\nerror stream");
  verb->footer(
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
  verb->callback([&run, options] { run = [options] { return Call(*options); }; });
}

}  // namespace orvane::cli
