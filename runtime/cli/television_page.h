// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "app/web_application.h"
#include "cli/exit_code.h"
#include "cli/output.h"
#include "cli/set_options.h"
#include "cli/set_printer.h"
#include "cli/time_limit.h"
#include "page/page.h"
#include "television/television.h"

namespace orvane::cli {

// What the verbs that open a page have in common, as given on the command line.
struct PageVerbOptions {
  television::TelevisionOptions set;
  std::string app;                       // a folder or a .wgt; empty: the scratch application
  std::vector<std::string> log_filters;  // empty: no log
  std::string log_format = "brief";
  bool trace = false;
  double timeout_seconds = 60;
  double closing_seconds = 10;  // for work of extensions that their instances wait for
};

// Adds the options to a verb. `options` is filled when the command line is parsed, and must live
// until then.
void AddPageVerbOptions(CLI::App& verb, PageVerbOptions& options);

// A television and one page of its application: everything that a verb needs to run scripts. One at
// a time in a process, on one thread. Its destruction closes the page, which may wait for work of
// its extensions, and stops the set.
class TelevisionPage final : private television::TelevisionListener {
 public:
  // `console` may be null, which drops what the page writes to it. Throws CommandError,
  // app::AppError, television::RequestError or tvset::SetError for what cannot be used; warnings go
  // to the standard error stream.
  TelevisionPage(const PageVerbOptions& options, page::ConsoleSink* console);
  ~TelevisionPage() override;
  TelevisionPage(const TelevisionPage&) = delete;
  TelevisionPage& operator=(const TelevisionPage&) = delete;

  page::Page& page() { return *page_; }

  // Runs the scripts, each with its name, and then the page until nothing is pending. What went
  // wrong has been printed.
  ExitCode Run(const std::vector<std::pair<std::string, std::string>>& named_scripts);

 private:
  void OnExplanation(const std::string& text) override { refusals_.Print(text); }
  void OnWarning(const std::string& text) override { Complain("warning: " + text); }

  TimeLimit time_limit_;
  RefusalPrinter refusals_;
  ErrorPrinter errors_;
  TracePrinter trace_;
  std::optional<SetPrinter> printer_;
  television::Television television_;
  std::optional<page::PageRuntime> page_runtime_;
  std::optional<page::Page> page_;
};

}  // namespace orvane::cli
