// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/temporary_folder.h"
#include "cli/output.h"
#include "cli/replayer.h"
#include "cli/session_file.h"
#include "cli/set_options.h"
#include "cli/shipped_parts.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

struct ReplayOptions {
  television::TelevisionOptions set;
  std::string file;
  double deadline_seconds = 10;
  double timeout_seconds = 10;
  bool strict = false;
  bool json = false;
};

tvset::Application AppOf(const SessionFile& session) {
  if (!session.app.value("id", Json()).is_string()) {
    throw CommandError(R"(the session does not name its application ("app" with an "id").)");
  }
  Json app = session.app;
  const std::string id = app["id"];
  if (!app.value("package", Json()).is_string()) app["package"] = id.substr(0, id.find('.'));
  return base::FromJson<tvset::Application>(app, "the session's \"app\"");
}

set_process::SetProcessOptions ProcessOptions(const ReplayOptions& options,
                                              const SessionFile& session,
                                              const fs::path& state_folder) {
  television::TelevisionOptions set = options.set;
  set.state_folder = state_folder;
  if (set.profile.empty()) set.profile = session.profile;
  set.app = AppOf(session);
  set_process::SetProcessOptions process;
  process.command = SetProcessCommand();
  process.start_options = base::ToJson(set);
  process.deadline = Milliseconds(options.deadline_seconds);
  process.patience = std::chrono::milliseconds(0);
  process.restarts = false;
  return process;
}

void PrintText(const std::vector<Difference>& differences, size_t count) {
  for (const Difference& difference : differences) {
    const RecordedMessage& message = difference.message;
    std::printf("%s %s%s%s\n  recorded: %s\n  replayed: %s\n",
                message.number == 0 ? "not recorded:"
                                    : ("message " + std::to_string(message.number) + ":").c_str(),
                (message.kind + " " + message.peer).c_str(), message.payload.empty() ? "" : " ",
                message.payload.c_str(), difference.recorded.c_str(), difference.replayed.c_str());
  }
  std::printf("%zu %s replayed, %zu %s\n", count, count == 1 ? "message" : "messages",
              differences.size(), differences.size() == 1 ? "difference" : "differences");
}

void PrintAsJson(const std::vector<Difference>& differences, size_t count) {
  Json rows = Json::array();
  for (const Difference& difference : differences) {
    const RecordedMessage& message = difference.message;
    rows.push_back({{"seq", message.number == 0 ? Json() : Json(message.number)},
                    {"context", message.context},
                    {"kind", message.kind},
                    {"peer", message.peer},
                    {"payload", message.payload},
                    {"recorded", difference.recorded},
                    {"replayed", difference.replayed}});
  }
  PrintJson({{"messages", count}, {"differences", std::move(rows)}});
}

ExitCode Replay(const ReplayOptions& options) {
  const SessionFile session = ReadSessionFile(options.file);
  // Of a set that has not been used before; gone afterwards.
  std::optional<base::TemporaryFolder> fresh;
  if (options.set.state_folder.empty()) fresh.emplace("orvane-replay-");
  const fs::path state_folder = fresh ? fresh->path() : fs::absolute(options.set.state_folder);
  Replayer replayer(ProcessOptions(options, session, state_folder),
                    options.strict ? Comparison::kStrict : Comparison::kForm,
                    Milliseconds(options.timeout_seconds));
  const std::vector<Difference> differences = replayer.Replay(session.messages);
  if (options.json) {
    PrintAsJson(differences, session.messages.size());
  } else {
    PrintText(differences, session.messages.size());
  }
  return differences.empty() ? ExitCode::kDone : ExitCode::kScriptError;
}

}  // namespace

void AddReplayVerb(CLI::App& command, Run& run) {
  constexpr double kLongestSeconds = 1000000;
  const auto verb = AddVerb<ReplayOptions>(
      command, run, "replay",
      "Send a recorded session to a fresh set; print what comes out differently", Replay);
  ReplayOptions& options = verb.options;
  verb.app
      .add_option("FILE", options.file,
                  "Session as the simulator exports it; - is the standard input")
      ->required()
      ->type_name("");
  AddSetOptions(verb.app, options.set,
                {"Without it: the recorded one", "Without it: a new one, removed afterwards"});
  AddDeadlineOption(verb.app, options.deadline_seconds,
                    "Give up a message that is not answered in so many seconds\n(default: 10)");
  verb.app
      .add_option("--timeout", options.timeout_seconds,
                  "Wait so many seconds in all for posted messages (default: 10)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, kLongestSeconds).description(""));
  verb.app.add_flag("--strict", options.strict,
                    "Compare UUIDs, memory and CPU figures too, which differ from run\nto run");
  verb.app.add_flag("--json", options.json, "Print the differences as JSON");
  verb.app.footer(
      "What a person did meanwhile (keys, faults, the set's state) is no message and not "
      "replayed.\n"
      "Exit status: 0 everything came out as recorded, 1 there are differences, 2 wrongly used or "
      "no\n"
      "such set can be started.");
}

}  // namespace orvane::cli
