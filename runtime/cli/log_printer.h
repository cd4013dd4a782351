// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cli/output.h"
#include "tvset/events.h"
#include "tvset/log_format.h"

namespace orvane::cli {

// Prints lines of the set's log on the standard error stream as they are written, from whatever
// thread. Watches from construction to destruction; the hub is borrowed.
class LogPrinter final : public tvset::Observer {
 public:
  // `expressions` are those of the platform's log tool, or a level alone ("debug", "info", "warn",
  // "error"), several in one text parted by commas. Throws UsageError for one that is none, and
  // for an unknown format.
  LogPrinter(tvset::EventHub& events, const std::vector<std::string>& expressions,
             const std::string& format);
  ~LogPrinter() override;
  LogPrinter(const LogPrinter&) = delete;
  LogPrinter& operator=(const LogPrinter&) = delete;

  void OnLogLine(const tvset::LogLine& line) override;

 private:
  tvset::EventHub& events_;
  tvset::LogFilter filter_;
  tvset::LogFormat format_;
};

// Prints what the set itself has to say about a refusal, for people who did not ask for the log.
class NoticePrinter final : public tvset::Observer {
 public:
  NoticePrinter(tvset::EventHub& events, RefusalPrinter& refusals);  // both borrowed
  ~NoticePrinter() override;
  NoticePrinter(const NoticePrinter&) = delete;
  NoticePrinter& operator=(const NoticePrinter&) = delete;

  void OnRefusal(const tvset::Refusal& refusal) override;

 private:
  tvset::EventHub& events_;
  RefusalPrinter& refusals_;
};

}  // namespace orvane::cli
