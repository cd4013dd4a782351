// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>

#include "app/web_application.h"
#include "cli/log_printer.h"
#include "cli/output.h"
#include "cli/session_options.h"
#include "cli/time_limit.h"
#include "extensions/extension_host.h"
#include "page/page.h"
#include "television/runtime_services.h"

namespace orvane::cli {

// A set with one application running in front, and one page of it: everything that a verb needs to
// run scripts. One at a time in a process, on one thread. Its destruction closes the page, which
// may wait for work of its extensions, and stops the set.
class Session {
 public:
  // `console` may be null, which drops what the page writes to it. Throws UsageError, app::AppError
  // or tvset::SetError for what cannot be used; warnings go to the standard error stream.
  Session(const SessionOptions& options, page::ConsoleSink* console);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  page::Page& page() { return *page_; }
  ErrorPrinter& errors() { return errors_; }

  // Runs the page until nothing is pending. False, after a message, when the time limit came first.
  bool RunUntilIdle();

 private:
  // Starts the set, and stops it after everything that uses it.
  struct RunningSet {
    explicit RunningSet(const SessionOptions& options);
    ~RunningSet();
    RunningSet(const RunningSet&) = delete;
    RunningSet& operator=(const RunningSet&) = delete;
  };

  void LaunchApplication();
  void LoadExtensions(const SessionOptions& options);
  void LoadExtension(const std::string& file_or_folder);
  bool Publishes(const std::string& name) const;

  TimeLimit time_limit_;
  RunningSet running_set_;
  const app::WebApplication application_;
  RefusalPrinter refusals_;
  ErrorPrinter errors_;
  TracePrinter trace_;
  std::optional<LogPrinter> log_;
  std::optional<NoticePrinter> notices_;  // in place of log_
  std::unique_ptr<television::RuntimeServices> services_;
  std::unique_ptr<extensions::ExtensionHost> host_;
  std::unique_ptr<page::PageRuntime> page_runtime_;
  std::unique_ptr<page::Page> page_;
};

}  // namespace orvane::cli
