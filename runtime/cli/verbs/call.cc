// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <picojson.h>

#include "base/near_names.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/session_options.h"
#include "cli/verbs/verbs.h"

// js/call.js
extern "C" const char kCallScript[];

namespace orvane::cli {

namespace {

struct CallOptions {
  SessionOptions session;
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
  using Arguments = picojson::array;

  void DefineOne(page::Page& page, const std::string& name,
                 void (MethodCall::*method)(const Arguments&));
  std::string Request() const;
  void Succeed(const Arguments& arguments) { Print(arguments, ExitCode::kDone); }
  void Fail(const Arguments& arguments) { Print(arguments, ExitCode::kScriptError); }
  void Print(const Arguments& arguments, ExitCode exit_code);
  void RefuseArgument(const Arguments& arguments);
  void RefuseMethod(const Arguments& arguments);

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
                           void (MethodCall::*method)(const Arguments&)) {
  page.DefineFunction("orvaneCommand." + name, [this, method](const std::string& arguments_json) {
    picojson::value arguments;
    picojson::parse(arguments, arguments_json);
    if (!answered()) (this->*method)(arguments.get<picojson::array>());
    return std::string();
  });
}

std::string MethodCall::Request() const {
  picojson::array arguments;
  for (const std::string& argument : options_.arguments) arguments.emplace_back(argument);
  picojson::object request;
  request["method"] = picojson::value(options_.method);
  request["arguments"] = picojson::value(arguments);
  return picojson::value(request).serialize();
}

void MethodCall::Print(const Arguments& arguments, ExitCode exit_code) {
  std::printf("%s\n", arguments.at(0).get<std::string>().c_str());
  exit_code_ = exit_code;
}

void MethodCall::RefuseArgument(const Arguments& arguments) {
  const auto index = static_cast<size_t>(arguments.at(0).get<double>());
  Complain("argument " + std::to_string(index + 1) + " of " + options_.method + " is not JSON: " +
           options_.arguments.at(index) + " (" + arguments.at(1).get<std::string>() +
           "). A shell takes quotes away, so put single quotes around each argument, such as "
           "'\"CPU\"' or '[\"ColorF0Red\"]'.");
  exit_code_ = ExitCode::kUsage;
}

void MethodCall::RefuseMethod(const Arguments& arguments) {
  std::vector<std::string> names;
  std::string list;
  for (const picojson::value& name : arguments.at(0).get<picojson::array>()) {
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
  Session session(options.session, options.show_console ? &console : nullptr);
  call.Define(session.page());
  if (const auto error = session.page().Evaluate(kCallScript, "call.js")) {
    session.errors().OnScriptError(*error);
    return ExitCode::kScriptError;
  }
  const bool idle = session.RunUntilIdle();
  if (session.errors().count() > 0) return ExitCode::kScriptError;
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
  AddSessionOptions(*verb, options->session);
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
