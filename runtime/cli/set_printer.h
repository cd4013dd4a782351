// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/output.h"
#include "tvset/events.h"
#include "tvset/log_format.h"

namespace orvane::cli {

// Prints on the standard error stream what the set says, from whatever thread: the lines of its
// log, or, for people who did not ask for the log, why it refused something. Watches from
// construction to destruction; hub and refusals are borrowed.
class SetPrinter final : public tvset::Observer {
 public:
  // `log_filters` are expressions of the platform's log tool, or a level alone ("debug", "info",
  // "warn", "error"), several in one text parted by commas; none: no log. Throws CommandError for
  // one that is none, and for an unknown format.
  SetPrinter(tvset::EventHub& events, RefusalPrinter& refusals,
             const std::vector<std::string>& log_filters, const std::string& log_format);
  ~SetPrinter() override;
  SetPrinter(const SetPrinter&) = delete;
  SetPrinter& operator=(const SetPrinter&) = delete;

  void OnLogLine(const tvset::LogLine& line) override;
  void OnRefusal(const tvset::Refusal& refusal) override;

 private:
  tvset::EventHub& events_;
  RefusalPrinter& refusals_;
  std::optional<tvset::LogFilter> filter_;  // empty: no log
  tvset::LogFormat format_ = tvset::LogFormat::kBrief;
};

}  // namespace orvane::cli
