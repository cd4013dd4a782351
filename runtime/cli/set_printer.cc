// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/set_printer.h"

#include <cstdio>
#include <map>

#include <boost/algorithm/string/split.hpp>

#include "cli/exit_code.h"
#include "tvset/error.h"

namespace orvane::cli {

namespace {

// The tool's own expressions for those of the options --log.
std::vector<std::string> Expressions(const std::vector<std::string>& values) {
  static const std::map<std::string, std::string> levels = {
      {"verbose", "*:V"}, {"debug", "*:D"}, {"info", "*:I"}, {"warn", "*:W"}, {"error", "*:E"}};
  std::vector<std::string> expressions;
  for (const std::string& value : values) {
    std::vector<std::string> parts;
    for (const std::string& part : boost::split(parts, value, [](char c) { return c == ','; })) {
      const auto level = levels.find(part);
      if (!part.empty()) expressions.push_back(level == levels.end() ? part : level->second);
    }
  }
  return expressions;
}

}  // namespace

SetPrinter::SetPrinter(tvset::EventHub& events, RefusalPrinter& refusals,
                       const std::vector<std::string>& log_filters, const std::string& log_format)
    : events_(events), refusals_(refusals) {
  try {
    if (!log_filters.empty()) filter_ = tvset::LogFilter(Expressions(log_filters));
    format_ = tvset::ParseLogFormat(log_format);
  } catch (const tvset::SetError& error) {
    throw CommandError(std::string("--log: ") + error.what());
  }
  events_.Add(this);
}

SetPrinter::~SetPrinter() { events_.Remove(this); }

void SetPrinter::OnLogLine(const tvset::LogLine& line) {
  if (!filter_ || !filter_->Shows(line)) return;
  const std::string text = tvset::FormatLogLine(line, format_) + '\n';
  std::fwrite(text.data(), 1, text.size(), stderr);
}

void SetPrinter::OnRefusal(const tvset::Refusal& refusal) {
  if (!filter_) refusals_.Print(refusal.text);
}

}  // namespace orvane::cli
