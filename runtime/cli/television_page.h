// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "app/web_application.h"
#include "cli/log_printer.h"
#include "cli/output.h"
#include "cli/page_verb_options.h"
#include "cli/time_limit.h"
#include "page/page.h"
#include "television/television.h"

namespace orvane::cli {

// A television and one page of its application: everything that a verb needs to run scripts. One at
// a time in a process, on one thread. Its destruction closes the page, which may wait for work of
// its extensions, and stops the set.
class TelevisionPage final : private television::TelevisionListener {
 public:
  // `console` may be null, which drops what the page writes to it. Throws UsageError,
  // app::AppError, television::RequestError or tvset::SetError for what cannot be used; warnings go
  // to the standard error stream.
  TelevisionPage(const PageVerbOptions& options, page::ConsoleSink* console);
  ~TelevisionPage() override;
  TelevisionPage(const TelevisionPage&) = delete;
  TelevisionPage& operator=(const TelevisionPage&) = delete;

  page::Page& page() { return *page_; }
  ErrorPrinter& errors() { return errors_; }

  // Runs the page until nothing is pending. False, after a message, when the time limit came first.
  bool RunUntilIdle();

 private:
  void OnExplanation(const std::string& text) override { refusals_.Print(text); }
  void OnWarning(const std::string& text) override { Complain("warning: " + text); }

  TimeLimit time_limit_;
  RefusalPrinter refusals_;
  ErrorPrinter errors_;
  TracePrinter trace_;
  std::optional<LogPrinter> log_;
  std::optional<NoticePrinter> notices_;  // in place of log_
  television::Television television_;
  std::optional<page::PageRuntime> page_runtime_;
  std::optional<page::Page> page_;
};

}  // namespace orvane::cli
