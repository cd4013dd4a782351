// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

// How a line of the log is shown to a person: the command line and the simulator's log print it as
// the platform's own tool does, and filter by that tool's expressions. Nothing here keeps anything.

// The forms in which the platform's log tool prints a line, L being the priority's letter.
enum class LogFormat {
  kBrief,       // L/tag(pid): text
  kTag,         // L/tag: text
  kProcess,     // L(pid) text  (tag)
  kThread,      // L(P pid, T tid) text
  kRaw,         // text
  kTime,        // date, time and zone, then as kBrief
  kThreadTime,  // date, time and zone, then L/tag(P pid, T tid): text
  kKernelTime,  // seconds since the machine started, zone, then as kThreadTime
  kLong,        // a line in brackets of all this but the zone, the text, an empty line
};

// "brief", "threadtime" and so on. Throws SetError, with the list of names, for another name.
TVSET_EXPORT LogFormat ParseLogFormat(std::string_view name);

// The line as the tool prints it, without the last line break. A text of several lines gives
// several lines, each with the prefix (kLong has the prefix once, and ends in an empty line). Times
// are local.
TVSET_EXPORT std::string FormatLogLine(const LogLine& line, LogFormat format);

// V, D, I, W, E, F, S, or ? for a number that is no priority.
TVSET_EXPORT char PriorityLetter(int priority);

// Which lines to show, by the tool's own expressions: "TAG:P" shows the tag from priority P on (a
// letter), "TAG" from verbose on, "*:P" every other tag. Without an expression for a line, it is
// shown when there is no expression at all. Plain data. Not changed after construction: any thread.
class TVSET_EXPORT LogFilter {
 public:
  // Shows every line.
  LogFilter() = default;
  // Throws SetError for a priority letter that there is none of.
  explicit LogFilter(const std::vector<std::string>& expressions);
  bool Shows(const LogLine& line) const;

 private:
  // What an expression says of its tag.
  struct Rule {
    std::string tag;
    // The lowest that is shown.
    int priority;
  };
  std::vector<Rule> rules_;
  int other_ = 0;  // lowest priority shown of tags without a rule
};

}  // namespace tvset
