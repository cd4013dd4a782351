// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/log_printer.h"

#include <cstdio>
#include <utility>

#include "cli/exit_code.h"
#include "tvset/error.h"

namespace orvane::cli {

namespace {

// The tool's own expression for one part of a --log value.
std::string Expression(const std::string& part) {
  static const std::pair<const char*, const char*> kLevels[] = {
      {"verbose", "*:V"}, {"debug", "*:D"}, {"info", "*:I"}, {"warn", "*:W"}, {"error", "*:E"}};
  for (const auto& [level, expression] : kLevels) {
    if (part == level) return expression;
  }
  return part;
}

std::vector<std::string> Expressions(const std::vector<std::string>& values) {
  std::vector<std::string> expressions;
  for (const std::string& value : values) {
    size_t begin = 0;
    while (begin <= value.size()) {
      const size_t end = std::min(value.find(',', begin), value.size());
      if (end > begin) expressions.push_back(Expression(value.substr(begin, end - begin)));
      begin = end + 1;
    }
  }
  return expressions;
}

}  // namespace

LogPrinter::LogPrinter(tvset::EventHub& events, const std::vector<std::string>& expressions,
                       const std::string& format)
    : events_(events) {
  try {
    filter_ = tvset::LogFilter(Expressions(expressions));
    format_ = tvset::ParseLogFormat(format);
  } catch (const tvset::SetError& error) {
    throw UsageError(std::string("--log: ") + error.what());
  }
  events_.Add(this);
}

LogPrinter::~LogPrinter() { events_.Remove(this); }

void LogPrinter::OnLogLine(const tvset::LogLine& line) {
  if (!filter_.Shows(line)) return;
  const std::string text = tvset::FormatLogLine(line, format_) + '\n';
  std::fwrite(text.data(), 1, text.size(), stderr);
}

NoticePrinter::NoticePrinter(tvset::EventHub& events, RefusalPrinter& refusals)
    : events_(events), refusals_(refusals) {
  events_.Add(this);
}

NoticePrinter::~NoticePrinter() { events_.Remove(this); }

void NoticePrinter::OnRefusal(const tvset::Refusal& refusal) { refusals_.Print(refusal.text); }

}  // namespace orvane::cli
