// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/television_page.h"

#include <filesystem>

#include "cli/shipped_parts.h"

namespace orvane::cli {

namespace {

// The application whose scripts run when none is named: it has a data folder of its own, and the
// one privilege that a first try needs, to register keys of the remote control. What needs more is
// refused, with the line that a config.xml would need.
app::WebApplication ScratchApplication() {
  app::WebApplication application;
  application.id = "OrvaneDesk.Scratch";
  application.package = "OrvaneDesk";
  application.name = "Scratch application";
  application.version = "1.0.0";
  application.privileges = {"http://tizen.org/privilege/tv.inputdevice"};
  application.folder = std::filesystem::current_path();
  return application;
}

app::WebApplication LoadApplication(const PageVerbOptions& options) {
  if (options.app.empty()) return ScratchApplication();
  app::WebApplication application =
      app::Load(options.app, StateFolder(options.set.state_folder) / "unpacked");
  for (const app::Problem& problem : application.warnings) {
    Complain("warning: " + app::Describe(problem));
  }
  return application;
}

television::TelevisionOptions Options(const PageVerbOptions& given) {
  television::TelevisionOptions options = given.set;
  options.app = television::ToInstall(LoadApplication(given));
  return options;
}

}  // namespace

void AddPageVerbOptions(CLI::App& verb, PageVerbOptions& options) {
  constexpr double kLongestSeconds = 1000000;
  verb.add_option("--app", options.app,
                  "Application: a folder with config.xml, or a .wgt.\n"
                  "Without it: a scratch application, which may register keys")
      ->type_name("DIR_OR_WGT");
  AddSetOptions(verb, options.set);
  verb.add_flag("--trace", options.trace,
                "Print each message between page, library and runtime, with\n"
                "direction, content and microseconds, on the standard error stream");
  Repeatable(verb.add_option("--log", options.log_filters,
                             "Print the set's log there too: debug, info, warn or error, or\n"
                             "filters as TAG:LETTER, such as QM_WEBAPI:D,*:E; repeatable")
                 ->type_name("FILTERS"));
  verb.add_option("--log-format", options.log_format,
                  "brief (the default), tag, process, thread, raw, time, threadtime,\n"
                  "kerneltime or long")
      ->type_name("NAME");
  verb.add_option("--timeout", options.timeout_seconds,
                  "End a page that is still busy after so many seconds (default: 60)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.001, kLongestSeconds).description(""));
  // For tests: in no list of options.
  verb.add_option("--closing", options.closing_seconds)->group("");
}

TelevisionPage::TelevisionPage(const PageVerbOptions& options, page::ConsoleSink* console)
    : time_limit_(Milliseconds(options.timeout_seconds), Milliseconds(options.closing_seconds)),
      refusals_(options.app.empty()),
      television_(Options(options), FindShippedParts(), Json(), *this) {
  printer_.emplace(television_.set().events(), refusals_, options.log_filters, options.log_format);
  television_.LoadExtensions();
  page_runtime_.emplace(television_.host());
  const tvset::Application& app = television_.options().app;
  page::PageOptions page_options;
  page_options.runtime = &television_.services();
  page_options.console = console;
  page_options.errors = &errors_;
  page_options.trace = options.trace ? &trace_ : nullptr;
  page_options.widget_id = app.id;
  page_options.widget_name = app.name;
  page_options.widget_version = app.version.value_or("");
  page_.emplace(*page_runtime_, page_options);
}

TelevisionPage::~TelevisionPage() { time_limit_.BeginClosing(); }

ExitCode TelevisionPage::Run(
    const std::vector<std::pair<std::string, std::string>>& named_scripts) {
  for (const auto& [name, script] : named_scripts) {
    if (const auto error = page_->Evaluate(script, name)) {
      errors_.OnScriptError(*error);
      return ExitCode::kScriptError;
    }
  }
  const bool is_idle = page_->RunUntilIdle(time_limit_.left());
  if (!is_idle) {
    Complain("stopped: after " + time_limit_.seconds() +
             " s the page still waits for a timer or an answer. Allow more with --timeout SECONDS, "
             "or end what keeps it busy (an interval that is never cleared?).");
  }
  if (errors_.count() > 0) return ExitCode::kScriptError;
  return is_idle ? ExitCode::kDone : ExitCode::kTimeLimit;
}

}  // namespace orvane::cli
