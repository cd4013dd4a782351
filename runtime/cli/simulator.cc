// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/simulator.h"

#include <signal.h>

#include <cerrno>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>

#include "cli/output.h"
#include "extensions/bounded_json.h"
#include "tvset/paths.h"

namespace orvane::cli {

namespace fs = std::filesystem;
using picojson::object;
using picojson::value;

namespace {

// A picture may take half of it.
constexpr std::chrono::seconds kPatience{60};

std::string NoneRuns(const fs::path& folder) {
  return "no simulator runs on " + folder.string() + ". Start one with orvane run --state " +
         folder.string() + ", or name the folder of another one with --state.";
}

// Null for what is no JSON object.
value ParseObject(const std::string& text) {
  std::string error;
  const std::optional<value> parsed = extensions::ParseBoundedJson(text, &error);
  return parsed && parsed->is<object>() ? *parsed : value();
}

// Empty for what cannot be read.
std::string ReadAll(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

// 0: it is none.
pid_t ReadPid(const value& pid) {
  const int64_t number = WholeNumber(pid).value_or(0);
  const bool fits = number > 0 && number <= std::numeric_limits<pid_t>::max();
  return fits ? static_cast<pid_t>(number) : 0;
}

std::string Text(const value& of, const std::string& name) {
  const value& member = Member(of, name);
  return member.is<std::string>() ? member.get<std::string>() : std::string();
}

// The text of an "error" member; empty when there is none.
std::string ErrorOf(const value& answer) {
  const value& error = Member(answer, "error");
  if (error.is<std::string>()) return error.get<std::string>();
  return error.is<object>() ? Text(error, "message") : std::string();
}

}  // namespace

Simulator::Simulator(const std::string& state_folder)
    : folder_(fs::absolute(state_folder.empty() ? tvset::Paths::DefaultStateFolder()
                                                : fs::path(state_folder))
                  .lexically_normal()) {
  const fs::path file = folder_ / "run" / "simulator.json";
  std::error_code error;
  if (!fs::exists(file, error)) throw NoSimulator(NoneRuns(folder_));
  const value run = ParseObject(ReadAll(file));
  const auto address = ParseLocalAddress(Text(run, "api"));
  pid_ = ReadPid(Member(run, "pid"));
  if (!address || pid_ == 0) {
    throw NoSimulator(file.string() + " does not say where the simulator is. " +
                      "End the simulator and start it again.");
  }
  address_ = *address;
  token_ = Text(run, "token");
  if (!runs()) throw NoSimulator(NoneRuns(folder_) + " The last one ended without cleaning up.");
}

bool Simulator::runs() const { return kill(pid_, 0) == 0 || errno == EPERM; }

value Simulator::Call(const std::string& method, const object& parameters) const {
  const object request{{"method", value(method)}, {"params", value(parameters)}};
  HttpAnswer http;
  try {
    http = HttpPost(address_, "/api/call",
                    {{"Content-Type", "application/json"}, {"X-Orvane-Token", token_}},
                    value(request).serialize(), kPatience);
  } catch (const HttpError& error) {
    throw NoSimulator("the simulator on " + folder_.string() + " does not answer: " + error.what() +
                      ". Start it again if it stays so.");
  }
  const value answer = ParseObject(http.body);
  if (http.status == 403) {
    throw NoSimulator("the simulator at " + address_.host + ":" + address_.port +
                      " does not take this command for one of its own. Was " +
                      (folder_ / "run/simulator.json").string() + " left behind by another run?");
  }
  if (!answer.is<object>()) {
    throw NoSimulator("what answers at " + address_.host + ":" + address_.port +
                      " is no simulator: status " + std::to_string(http.status) +
                      " and no JSON. Was " + (folder_ / "run/simulator.json").string() +
                      " left behind by another run?");
  }
  const std::string error = ErrorOf(answer);
  if (!error.empty()) throw SimulatorRefusal(error);
  if (http.status != 200) {
    throw SimulatorRefusal("the simulator refused " + method + " with status " +
                           std::to_string(http.status) + ".");
  }
  return Member(answer, "result");
}

void AddSimulatorOptions(CLI::App& verb, SimulatorOptions& options, const std::string& json_help) {
  verb.group("Verbs for a running simulator");
  verb.add_option("--state", options.state_folder,
                  "Folder of the set that orvane run has started.\n"
                  "Without it: $ORVANE_STATE, else ~/.local/state/orvane")
      ->type_name("DIR");
  verb.add_flag("--json", options.json, json_help);
}

ExitCode WithSimulator(const SimulatorOptions& options,
                       const std::function<ExitCode(const Simulator&)>& work) {
  try {
    return work(Simulator(options.state_folder));
  } catch (const NoSimulator& error) {
    Complain(error.what());
    return ExitCode::kNoSimulator;
  } catch (const SimulatorRefusal& error) {
    Complain(error.what());
    return ExitCode::kScriptError;
  }
}

}  // namespace orvane::cli
