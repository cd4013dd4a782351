// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <stdlib.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/exit_code.h"
#include "cli/output.h"
#include "cli/replayer.h"
#include "cli/session_file.h"
#include "cli/set_options.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

struct ReplayOptions : SetOptions {
  std::string file;
  double deadline_seconds = 10;
  double timeout_seconds = 10;
  bool strict = false;
  bool json = false;
};

// Of a set that has not been used before; gone afterwards.
class FreshFolder {
 public:
  FreshFolder() {
    std::string name = (fs::temp_directory_path() / "orvane-replay-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw UsageError("no folder can be made in " + fs::temp_directory_path().string() +
                       ". Set TMPDIR, or name a folder with --state.");
    }
    path_ = name;
  }
  ~FreshFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  FreshFolder(const FreshFolder&) = delete;
  FreshFolder& operator=(const FreshFolder&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

Json AppOf(const SessionFile& session) {
  Json app = session.app;
  if (!app.value("id", Json()).is_string()) {
    throw UsageError(R"(the session does not name its application ("app" with an "id").)");
  }
  const std::string id = app["id"];
  if (!app.value("package", Json()).is_string()) app["package"] = id.substr(0, id.find('.'));
  return app;
}

set_process::SetProcessOptions ProcessOptions(const ReplayOptions& options,
                                              const SessionFile& session,
                                              const fs::path& state_folder) {
  set_process::SetProcessOptions process;
  process.command = {"/proc/self/exe", "set-process", "--fd", "3"};
  process.start_options = {{"state", state_folder.string()},
                           {"profile", options.profile.empty() ? session.profile : options.profile},
                           {"app", AppOf(session)},
                           {"faults", options.faults},
                           {"extensions", AbsoluteExtensions(options.extensions)}};
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
  std::unique_ptr<FreshFolder> fresh;
  if (options.state_folder.empty()) fresh = std::make_unique<FreshFolder>();
  const fs::path state_folder = fresh ? fresh->path() : fs::absolute(options.state_folder);
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
  const auto options = std::make_shared<ReplayOptions>();
  CLI::App* const verb = command.add_subcommand(
      "replay", "Send a recorded session to a fresh set; print what comes out differently");
  verb->group("Verbs");
  verb->add_option("FILE", options->file,
                   "Session as the simulator exports it; - is the standard input")
      ->required()
      ->type_name("");
  AddSetOptions(*verb, *options,
                {"Without it: the recorded one", "Without it: a new one, removed afterwards"});
  AddDeadlineOption(*verb, options->deadline_seconds,
                    "Give up a message that is not answered in so many seconds\n(default: 10)");
  verb->add_option("--timeout", options->timeout_seconds,
                   "Wait so many seconds in all for posted messages (default: 10)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, kLongestSeconds).description(""));
  verb->add_flag("--strict", options->strict,
                 "Compare UUIDs, memory and CPU figures too, which differ from run\nto run");
  verb->add_flag("--json", options->json, "Print the differences as JSON");
  verb->footer(
      "What a person did meanwhile (keys, faults, the set's state) is no message and not "
      "replayed.\n"
      "Exit status: 0 everything came out as recorded, 1 there are differences, 2 wrongly used or "
      "no\n"
      "such set can be started.");
  verb->callback([options, &run] { run = [options] { return Replay(*options); }; });
}

}  // namespace orvane::cli
