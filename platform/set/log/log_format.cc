// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/log_format.h"

#include <time.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <utility>

#include <dlog.h>

#include "tvset/error.h"

namespace tvset {
namespace {

constexpr int64_t kSecond = 1'000'000'000;
constexpr int64_t kMillisecond = 1'000'000;
constexpr size_t kMaxPrefix = 127;
constexpr char kLetters[] = "VDIWEFS";  // from DLOG_VERBOSE on

constexpr std::array<std::pair<std::string_view, LogFormat>, 9> kFormats{{
    {"brief", LogFormat::kBrief},
    {"tag", LogFormat::kTag},
    {"process", LogFormat::kProcess},
    {"thread", LogFormat::kThread},
    {"raw", LogFormat::kRaw},
    {"time", LogFormat::kTime},
    {"threadtime", LogFormat::kThreadTime},
    {"kerneltime", LogFormat::kKernelTime},
    {"long", LogFormat::kLong},
}};

__attribute__((format(printf, 1, 2))) std::string Format(const char* format, ...) {
  char text[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  return text;
}

// "11-20 23:59:35.123", and the zone.
std::pair<std::string, std::string> LocalTime(int64_t time_ns) {
  const auto seconds = static_cast<time_t>(time_ns / kSecond);
  tm local{};
  localtime_r(&seconds, &local);
  char date[32];
  char zone[16];
  strftime(date, sizeof(date), "%m-%d %H:%M:%S", &local);
  strftime(zone, sizeof(zone), "%z", &local);
  const int milliseconds = static_cast<int>(time_ns % kSecond / kMillisecond);
  return {Format("%s.%03d", date, milliseconds), zone};
}

int64_t ClockNow(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return int64_t{now.tv_sec} * kSecond + now.tv_nsec;
}

// "12345.678", the time since the machine started.
std::string KernelTime(int64_t time_ns) {
  const int64_t uptime_ns =
      std::max<int64_t>(0, time_ns - ClockNow(CLOCK_REALTIME) + ClockNow(CLOCK_MONOTONIC));
  return Format("%5lld.%03d", static_cast<long long>(uptime_ns / kSecond),
                static_cast<int>(uptime_ns % kSecond / kMillisecond));
}

struct LineFrame {
  std::string prefix;
  std::string suffix;
};

LineFrame FrameOf(const LogLine& line, LogFormat format) {
  const char letter = PriorityLetter(line.priority);
  const char* tag = line.tag.c_str();
  const std::string ids = Format("P%5d, T%5d", line.pid, line.tid);
  switch (format) {
    case LogFormat::kBrief:
      return {Format("%c/%-8s(%5d): ", letter, tag, line.pid), ""};
    case LogFormat::kTag:
      return {Format("%c/%-8s: ", letter, tag), ""};
    case LogFormat::kProcess:
      return {Format("%c(%5d) ", letter, line.pid), Format("  (%s)", tag)};
    case LogFormat::kThread:
      return {Format("%c(%s) ", letter, ids.c_str()), ""};
    case LogFormat::kRaw:
      return {};
    case LogFormat::kTime: {
      const auto [date, zone] = LocalTime(line.time_ns);
      return {Format("%s%s %c/%-8s(%5d): ", date.c_str(), zone.c_str(), letter, tag, line.pid), ""};
    }
    case LogFormat::kThreadTime: {
      const auto [date, zone] = LocalTime(line.time_ns);
      return {Format("%s%s %c/%-8s(%s): ", date.c_str(), zone.c_str(), letter, tag, ids.c_str()),
              ""};
    }
    case LogFormat::kKernelTime: {
      const std::string zone = LocalTime(line.time_ns).second;
      return {Format("%s%s %c/%-8s(%s): ", KernelTime(line.time_ns).c_str(), zone.c_str(), letter,
                     tag, ids.c_str()),
              ""};
    }
    case LogFormat::kLong: {
      const std::string date = LocalTime(line.time_ns).first;
      return {Format("[ %s %c/%-8s %s]", date.c_str(), letter, tag, ids.c_str()), ""};
    }
  }
  return {};
}

}  // namespace

char PriorityLetter(int priority) {
  if (priority < DLOG_VERBOSE || priority > DLOG_SILENT) return '?';
  return kLetters[priority - DLOG_VERBOSE];
}

LogFormat ParseLogFormat(std::string_view name) {
  std::string names;
  for (const auto& [known, format] : kFormats) {
    if (known == name) return format;
    names += (names.empty() ? "" : ", ") + std::string(known);
  }
  throw SetError("\"" + std::string(name) + "\" is no log format; there are " + names);
}

std::string FormatLogLine(const LogLine& line, LogFormat format) {
  LineFrame frame = FrameOf(line, format);
  if (frame.prefix.size() > kMaxPrefix) frame.prefix.resize(kMaxPrefix);
  if (format == LogFormat::kLong) return frame.prefix + "\n" + line.text + "\n";
  std::string_view text = line.text;
  // A line break at the end of the text begins no further line.
  if (!text.empty() && text.back() == '\n') text.remove_suffix(1);
  std::string result;
  while (true) {
    const size_t end = text.find('\n');
    result += frame.prefix;
    result += text.substr(0, end);
    result += frame.suffix;
    if (end == std::string_view::npos) return result;
    result += '\n';
    text.remove_prefix(end + 1);
  }
}

LogFilter::LogFilter(const std::vector<std::string>& expressions)
    : other_(expressions.empty() ? 0 : DLOG_PRIO_MAX) {
  for (const std::string& expression : expressions) {
    const size_t colon = expression.rfind(':');
    const std::string tag = expression.substr(0, colon);
    int priority = DLOG_VERBOSE;
    if (colon != std::string::npos) {
      const std::string letter = expression.substr(colon + 1);
      const size_t index = std::string_view(kLetters).find(letter);
      if (letter.size() != 1 || index == std::string_view::npos) {
        throw SetError("\"" + expression + "\" is no log filter: after the colon comes one of " +
                       kLetters);
      }
      priority = DLOG_VERBOSE + static_cast<int>(index);
    }
    if (tag == "*") {
      other_ = priority;
    } else {
      rules_.push_back(Rule{tag, priority});
    }
  }
}

bool LogFilter::Shows(const LogLine& line) const {
  for (const Rule& rule : rules_) {
    if (rule.tag == line.tag) return line.priority >= rule.priority;
  }
  return line.priority >= other_;
}

}  // namespace tvset
