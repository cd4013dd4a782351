// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "cli/json_output.h"
#include "cli/output.h"
#include "cli/simulator.h"
#include "cli/verbs/verbs.h"
#include "tvset/error.h"
#include "tvset/log_format.h"

namespace orvane::cli {

using picojson::object;
using picojson::value;

namespace {

struct LogOptions {
  SimulatorOptions simulator;
  bool follow = false;
  std::string tag;
  std::string level = "V";
  std::string format = "brief";
};

constexpr double kLinesPerCall = 5000;
constexpr std::chrono::milliseconds kPause{150};  // between two looks
constexpr std::chrono::milliseconds kEnding{4000};

const std::map<std::string, std::string>& Levels() {
  static const std::map<std::string, std::string> levels = {
      {"verbose", "V"}, {"debug", "D"}, {"info", "I"}, {"warn", "W"}, {"warning", "W"},
      {"error", "E"},   {"fatal", "F"}, {"V", "V"},    {"D", "D"},    {"I", "I"},
      {"W", "W"},       {"E", "E"},     {"F", "F"}};
  return levels;
}

tvset::LogLine ReadLine(const value& json) {
  const auto number = [&](const char* name) { return WholeNumber(Member(json, name)).value_or(0); };
  tvset::LogLine line;
  line.time_ns = number("time_ns");
  line.pid = static_cast<pid_t>(number("pid"));
  line.tid = static_cast<pid_t>(number("tid"));
  line.priority = static_cast<int>(number("priority"));
  line.tag = Member(json, "tag").to_str();
  line.text = Member(json, "text").to_str();
  return line;
}

// Prints the simulator's log from its oldest line on.
class LogReader {
 public:
  LogReader(const Simulator& simulator, const LogOptions& options)
      : simulator_(simulator),
        json_(options.simulator.json),
        format_(tvset::ParseLogFormat(options.format)),
        filter_({(options.tag.empty() ? "*" : options.tag) + ":" + Levels().at(options.level)}) {}

  // What has come since the last time.
  void PrintNew() {
    while (true) {
      const value answer =
          simulator_.Call("log.list", {{"since", since_}, {"limit", value(kLinesPerCall)}});
      has_answer_ = true;
      const value& lines = Member(answer, "lines");
      if (!lines.is<picojson::array>() || lines.get<picojson::array>().empty()) break;
      for (const value& line : lines.get<picojson::array>()) Print(line);
      const value& next = Member(answer, "next");
      if (!next.is<double>() || next == since_) break;  // it would give the same lines again
      since_ = next;
    }
    std::fflush(stdout);
  }

  bool has_answer() const { return has_answer_; }  // the simulator answered at least once

 private:
  void Print(const value& json) {
    if (!json.is<object>()) return;
    const tvset::LogLine line = ReadLine(json);
    if (!filter_.Shows(line)) return;
    const std::string text = json_ ? JsonText(json) : tvset::FormatLogLine(line, format_);
    std::fwrite((text + '\n').data(), 1, text.size() + 1, stdout);
  }

  const Simulator& simulator_;
  const bool json_;
  const tvset::LogFormat format_;
  const tvset::LogFilter filter_;
  value since_ = value(0.0);
  bool has_answer_ = false;
};

// A simulator that ends stops answering a moment before its process is gone.
bool HasEnded(const Simulator& simulator) {
  const auto end = std::chrono::steady_clock::now() + kEnding;
  while (simulator.runs() && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(kPause);
  }
  return !simulator.runs();
}

ExitCode Log(const Simulator& simulator, const LogOptions& options) {
  LogReader reader(simulator, options);
  while (true) {
    try {
      reader.PrintNew();
    } catch (const NoSimulator&) {
      // One that never answered is none that has ended.
      if (!options.follow || !reader.has_answer() || !HasEnded(simulator)) throw;
      Complain("the simulator has ended.");
      return ExitCode::kDone;
    }
    if (!options.follow) return ExitCode::kDone;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace

void AddLogVerb(CLI::App& command, Run& run) {
  const auto options = std::make_shared<LogOptions>();
  CLI::App* const verb = command.add_subcommand("log", "Print the set's log");
  verb->add_flag("-f,--follow", options->follow, "Go on with what comes, until the simulator ends");
  verb->add_option("--tag", options->tag, "Lines of this tag only")->type_name("TAG");
  verb->add_option("--level", options->level,
                   "Lines from this level on: verbose, debug, info, warn,\n"
                   "error or fatal, or the letter")
      ->type_name("LEVEL")
      ->transform(CLI::IsMember(Levels(), CLI::ignore_case).description(""));
  verb->add_option("--format", options->format,
                   "brief (the default), tag, process, thread, raw, time, threadtime,\n"
                   "kerneltime or long")
      ->type_name("NAME");
  AddSimulatorOptions(*verb, options->simulator, "Print one JSON object for each line");
  verb->footer(
      "Exit status: 0 printed, 2 no such level or format, 4 no simulator runs.\n\n"
      "Example: orvane log -f --tag QM_WEBAPI --level warn");
  verb->callback([options, &run] {
    run = [options] {
      tvset::ParseLogFormat(options->format);
      return WithSimulator(options->simulator,
                           [&](const Simulator& simulator) { return Log(simulator, *options); });
    };
  });
}

}  // namespace orvane::cli
