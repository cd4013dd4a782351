// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/television_page.h"

#include <cstdio>
#include <filesystem>

#include "cli/scratch_application.h"
#include "cli/shipped_parts.h"
#include "tvset/paths.h"

namespace orvane::cli {

namespace {

app::WebApplication LoadApplication(const PageVerbOptions& options) {
  if (options.app.empty()) return ScratchApplication();
  const std::filesystem::path state = StateFolder(options);
  app::WebApplication application = app::Load(options.app, state / "unpacked");
  for (const app::Problem& problem : application.warnings) {
    Complain("warning: " + app::Describe(problem));
  }
  return application;
}

television::TelevisionOptions Options(const PageVerbOptions& given) {
  television::TelevisionOptions options;
  options.state_folder = given.state_folder;
  options.profile = given.profile;
  options.app = television::ToInstall(LoadApplication(given));
  options.faults = given.faults;
  options.extensions = given.extensions;
  return options;
}

}  // namespace

TelevisionPage::TelevisionPage(const PageVerbOptions& options, page::ConsoleSink* console)
    : time_limit_(Milliseconds(options.timeout_seconds), Milliseconds(options.closing_seconds)),
      refusals_(options.app.empty()),
      television_(Options(options), FindShippedParts(), Json(), *this) {
  tvset::EventHub& events = television_.set().events();
  if (options.log_filters.empty()) {
    notices_.emplace(events, refusals_);
  } else {
    log_.emplace(events, options.log_filters, options.log_format);
  }
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

bool TelevisionPage::RunUntilIdle() {
  if (page_->RunUntilIdle(time_limit_.left())) return true;
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%g",
                static_cast<double>(time_limit_.limit().count()) / 1000);
  Complain(
      std::string("stopped: after ") + seconds +
      " s the page still waits for a timer or an answer. Allow more with --timeout SECONDS, or "
      "end what keeps it busy (an interval that is never cleared?).");
  return false;
}

}  // namespace orvane::cli
