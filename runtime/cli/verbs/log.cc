// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "cli/output.h"
#include "cli/verbs/simulator_verb.h"
#include "television/set_fields.h"

namespace orvane::cli {

namespace {

struct LogOptions : SimulatorOptions {
  bool follow = false;
  std::string tag;
  std::string level = "V";
  std::string format = "brief";

  void Check() const { tvset::ParseLogFormat(format); }
};

constexpr int kLinesPerCall = 5000;
// A simulator that ends stops answering a moment before its process is gone.
constexpr std::chrono::milliseconds kEnding{4000};
// Connections in a row on which nothing came.
constexpr int kMostEmpty = 3;

const std::map<std::string, std::string>& Levels() {
  static const std::map<std::string, std::string> levels = {
      {"verbose", "V"}, {"debug", "D"}, {"info", "I"}, {"warn", "W"}, {"warning", "W"},
      {"error", "E"},   {"fatal", "F"}, {"V", "V"},    {"D", "D"},    {"I", "I"},
      {"W", "W"},       {"E", "E"},     {"F", "F"}};
  return levels;
}

// Prints the simulator's log from its oldest line on.
class LogReader {
 public:
  LogReader(const Simulator& simulator, const LogOptions& options)
      : simulator_(simulator),
        json_(options.json),
        format_(tvset::ParseLogFormat(options.format)),
        filter_({(options.tag.empty() ? "*" : options.tag) + ":" + Levels().at(options.level)}) {}

  // What the simulator has kept since the line that was printed last.
  void PrintKept() {
    while (true) {
      const Json answer = simulator_.Call("log.list", {{"since", last_}, {"limit", kLinesPerCall}});
      has_answer_ = true;
      const Json lines = answer.value("lines", Json::array());
      for (const Json& line : lines) Print(line);
      const auto next = answer.value("next", last_);
      if (lines.empty() || next <= last_) break;  // it would give the same again
      last_ = next;
    }
    std::fflush(stdout);
  }

  // The lines among what the simulator tells.
  void PrintTold(std::string_view message) {
    const Json told = base::ParseJson(message);
    for (const Json& event : told.at("events")) {
      if (event.at("name") != "log") continue;
      for (const Json& line : event.at("data")) {
        const auto seq = line.at("seq").get<int64_t>();
        if (seq <= last_) continue;
        last_ = seq;
        Print(line);
      }
    }
    std::fflush(stdout);
  }

  bool has_answer() const { return has_answer_; }  // the simulator answered at least once

 private:
  void Print(const Json& json) {
    const auto line = base::FromJson<tvset::LogLine>(json, "a line");
    if (!filter_.Shows(line)) return;
    if (json_) return PrintJson(json);
    const std::string text = tvset::FormatLogLine(line, format_) + '\n';
    std::fwrite(text.data(), 1, text.size(), stdout);
  }

  const Simulator& simulator_;
  const bool json_;
  const tvset::LogFormat format_;
  const tvset::LogFilter filter_;
  int64_t last_ = 0;
  bool has_answer_ = false;
};

// Until the simulator does not answer any more. It disconnects one who reads too slowly, who then
// goes on with what it has kept.
void Follow(const Simulator& simulator, LogReader& reader) {
  for (int empty = 0; empty < kMostEmpty; ++empty) {
    const auto events = simulator.OpenEvents();
    reader.PrintKept();
    while (const auto message = events->Next()) {
      reader.PrintTold(*message);
      empty = 0;
    }
  }
  throw NoSimulator("the simulator ends every connection at once. Start it again.");
}

ExitCode Log(const Simulator& simulator, const LogOptions& options) {
  LogReader reader(simulator, options);
  if (!options.follow) {
    reader.PrintKept();
    return ExitCode::kDone;
  }
  try {
    Follow(simulator, reader);
  } catch (const NoSimulator& error) {
    // One that never answered is none that has ended.
    const bool is_gone = dynamic_cast<const SimulatorGone*>(&error) != nullptr;
    if (!reader.has_answer() || !simulator.EndsWithin(is_gone ? kEnding : kEnding * 0)) throw;
  }
  Complain("the simulator has ended.");
  return ExitCode::kDone;
}

}  // namespace

void AddLogVerb(CLI::App& command, Run& run) {
  const auto verb = AddSimulatorVerb<LogOptions>(command, run, "log", "Print the set's log", Log);
  LogOptions& options = verb.options;
  verb.app.add_flag("-f,--follow", options.follow,
                    "Go on with what comes, until the simulator ends");
  verb.app.add_option("--tag", options.tag, "Lines of this tag only")->type_name("TAG");
  verb.app
      .add_option("--level", options.level,
                  "Lines from this level on: verbose, debug, info, warn,\n"
                  "error or fatal, or the letter")
      ->type_name("LEVEL")
      ->transform(CLI::IsMember(Levels(), CLI::ignore_case).description(""));
  verb.app
      .add_option("--format", options.format,
                  "brief (the default), tag, process, thread, raw, time, threadtime,\n"
                  "kerneltime or long")
      ->type_name("NAME");
  AddSimulatorOptions(verb.app, options, "Print one JSON object for each line");
  verb.app.footer(
      "Exit status: 0 printed, 2 no such level or format, 4 no simulator runs.\n\n"
      "Example: orvane log -f --tag QM_WEBAPI --level warn");
}

}  // namespace orvane::cli
