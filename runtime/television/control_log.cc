// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the log, and those that only tests have.
#include <algorithm>
#include <csignal>
#include <vector>

#include <dlog.h>

#include "television/control.h"
#include "television/request_error.h"
#include "tvset/log_format.h"

namespace orvane::television {

namespace {

// A letter, such as "W", or the priority's number; null counts as `otherwise`.
int ReadPriority(const Json& given, const char* field, int otherwise) {
  if (given.is_null()) return otherwise;
  int number = DLOG_UNKNOWN;
  base::fields::ReadInteger(given, &number);
  for (int priority = DLOG_VERBOSE; priority <= DLOG_SILENT; ++priority) {
    const bool by_letter = given.is_string() && given.get_ref<const std::string&>() ==
                                                    std::string(1, tvset::PriorityLetter(priority));
    if (by_letter || number == priority) return priority;
  }
  base::fields::Refuse(field, "V, D, I, W, E, F or S, or a number from 2 to 8", &given);
}

}  // namespace

Json Control::LogTail(const LogTailParameters& parameters) {
  const int lowest =
      ReadPriority(parameters.level, "\"level\" of the parameters of log.tail", DLOG_UNKNOWN);
  const std::vector<tvset::LogLine> lines = set().log().lines();
  std::vector<tvset::LogLine> newest;
  for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
    if (newest.size() == static_cast<size_t>(parameters.count)) break;
    if (line->priority < lowest) continue;
    if (!parameters.tag.empty() && line->tag != parameters.tag) continue;
    newest.push_back(*line);
  }
  std::reverse(newest.begin(), newest.end());
  return base::ToJson(newest);
}

// The kernel's markers since the set was started, as far as they are kept.
Json Control::MarkersList(const NoParameters&) {
  std::vector<tvset::KernelMarker> markers;
  for (const tvset::KernelMarker& marker : set().kernel_markers().list()) markers.push_back(marker);
  return base::ToJson(markers);
}

Json Control::LogWrite(const LogWriteParameters& parameters) {
  const int priority =
      ReadPriority(parameters.priority, "\"priority\" of the parameters of log.write", DLOG_INFO);
  for (int64_t i = 0; i < parameters.count; ++i) {
    set().log().Write(LOG_ID_MAIN, priority, parameters.tag, parameters.text);
  }
  return {};
}

// Ends the process as a fault of the library would.
Json Control::DebugCrash(const CrashParameters& parameters) {
  if (!television_.options().test_hooks) {
    throw RequestError("debug.crash is for tests: start with --test-hooks to have it.");
  }
  std::raise(parameters.signal);
  return {};
}

}  // namespace orvane::television
