// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the log, and those that only tests have.
#include <csignal>
#include <vector>

#include <dlog.h>

#include "television/control.h"
#include "tvset/log_format.h"

namespace orvane::television {

using picojson::object;
using picojson::value;

namespace {

constexpr int64_t kMostLines = 100000;

value LineJson(const tvset::LogLine& line) {
  return value(object{{"time_ns", value(static_cast<double>(line.time_ns))},
                      {"pid", value(static_cast<double>(line.pid))},
                      {"tid", value(static_cast<double>(line.tid))},
                      {"priority", value(static_cast<double>(line.priority))},
                      {"letter", value(std::string(1, tvset::PriorityLetter(line.priority)))},
                      {"tag", value(line.tag)},
                      {"text", value(line.text)}});
}

// A letter, such as "W", or the priority's number.
int ParsePriority(const Fields& parameters, const std::string& name, int otherwise) {
  const value* const given = parameters.Find(name);
  if (given == nullptr) return otherwise;
  if (!given->is<std::string>()) {
    return static_cast<int>(parameters.Integer(name, DLOG_VERBOSE, DLOG_SILENT));
  }
  for (int priority = DLOG_VERBOSE; priority <= DLOG_SILENT; ++priority) {
    if (given->get<std::string>() == std::string(1, tvset::PriorityLetter(priority))) {
      return priority;
    }
  }
  parameters.Refuse(name, "V, D, I, W, E, F or S, or a number from 2 to 8");
}

}  // namespace

value Control::LogTail(const Fields& parameters) {
  const auto count = static_cast<size_t>(parameters.Integer("count", 1, kMostLines, 1000));
  const int lowest = ParsePriority(parameters, "level", DLOG_UNKNOWN);
  const std::string tag = parameters.Text("tag", "");
  std::vector<tvset::LogLine> lines = set().log().lines();
  picojson::array newest;
  for (auto line = lines.rbegin(); line != lines.rend() && newest.size() < count; ++line) {
    if (line->priority < lowest || (!tag.empty() && line->tag != tag)) continue;
    newest.push_back(LineJson(*line));
  }
  return value(picojson::array(newest.rbegin(), newest.rend()));
}

// The kernel's markers since the set was started, as far as they are kept.
value Control::MarkersList(const Fields&) {
  picojson::array markers;
  for (const tvset::KernelMarker& marker : set().kernel_markers().list()) {
    markers.emplace_back(EventStream::MarkerEvent(marker));
  }
  return value(markers);
}

value Control::LogWrite(const Fields& parameters) {
  const int priority = ParsePriority(parameters, "priority", DLOG_INFO);
  const std::string tag = parameters.Text("tag", "ORVANE");
  const std::string& text = parameters.Text("text");
  const int64_t count = parameters.Integer("count", 1, kMostLines, 1);
  for (int64_t i = 0; i < count; ++i) set().log().Write(LOG_ID_MAIN, priority, tag, text);
  return {};
}

// Ends the process as a fault of the library would.
value Control::DebugCrash(const Fields& parameters) {
  if (!television_.options().test_hooks) {
    throw RequestError("debug.crash is for tests: start with --test-hooks to have it.");
  }
  const int64_t signal = parameters.Integer("signal", 1, 31, SIGABRT);
  std::raise(static_cast<int>(signal));
  return {};
}

}  // namespace orvane::television
