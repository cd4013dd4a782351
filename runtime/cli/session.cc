// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/session.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "cli/device_keys.h"
#include "cli/exit_code.h"
#include "cli/fault_option.h"
#include "cli/home.h"
#include "cli/scratch_application.h"
#include "tvset/set.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

constexpr char kOwnExtension[] = "dravelt.orvane";

app::WebApplication LoadApplication(const SessionOptions& options) {
  if (options.app.empty()) return ScratchApplication();
  return app::Load(options.app, tvset::Set::Current().paths().state_folder() / "unpacked");
}

extensions::HostOptions HostOptions(const std::string& app_id,
                                    television::RuntimeServices& services) {
  extensions::HostOptions options;
  options.app_id = app_id;
  options.warn = [](const std::string& text) { Complain("warning: " + text); };
  options.access_check = [&services](const std::string& api) { return services.HasPrivilege(api); };
  return options;
}

}  // namespace

Session::RunningSet::RunningSet(const SessionOptions& options) {
  tvset::Set::Start({options.state_folder, options.profile});
  const fs::path device_keys = FindDeviceKeys();
  if (!device_keys.empty()) {
    tvset::Set::Current().key_grabs().AddKnownKeys(ReadDeviceKeys(device_keys));
  }
}

Session::RunningSet::~RunningSet() { tvset::Set::Stop(); }

Session::Session(const SessionOptions& options, page::ConsoleSink* console)
    : time_limit_(Milliseconds(options.timeout_seconds)),
      running_set_(options),
      application_(LoadApplication(options)),
      refusals_(options.app.empty()) {
  tvset::Set& set = tvset::Set::Current();
  if (options.log_filters.empty()) {
    notices_.emplace(set.events(), refusals_);
  } else {
    log_.emplace(set.events(), options.log_filters, options.log_format);
  }
  LaunchApplication();
  for (const std::string& text : options.faults) {
    const tvset::Fault fault = ParseFault(text);
    set.faults().Fail(fault.function, fault.code, fault.mode);
  }
  services_ = std::make_unique<television::RuntimeServices>(
      set, application_.id, [this](const std::string& text) { refusals_.Print(text); });
  host_ = std::make_unique<extensions::ExtensionHost>(HostOptions(application_.id, *services_));
  LoadExtensions(options);
  page_runtime_ = std::make_unique<page::PageRuntime>(*host_);
  page::PageOptions page_options;
  page_options.runtime = services_.get();
  page_options.console = console;
  page_options.errors = &errors_;
  page_options.trace = options.trace ? &trace_ : nullptr;
  page_options.widget_id = application_.id;
  page_options.widget_name = application_.name;
  page_options.widget_version = application_.version;
  page_ = std::make_unique<page::Page>(*page_runtime_, page_options);
}

Session::~Session() { time_limit_.BeginClosing(); }

bool Session::RunUntilIdle() {
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

void Session::LaunchApplication() {
  for (const app::Problem& problem : application_.warnings) {
    Complain("warning: " + app::Describe(problem));
  }
  tvset::Applications& applications = tvset::Set::Current().applications();
  applications.Install({application_.id, application_.package, application_.name,
                        application_.folder, application_.metadata, application_.privileges});
  applications.Launch(application_.id, getpid());
}

// The given ones come first, so that a library that is being worked on takes the place of the
// project's own.
void Session::LoadExtensions(const SessionOptions& options) {
  for (const std::string& given : options.extensions) LoadExtension(given);
  if (Publishes(kOwnExtension)) return;
  const fs::path own = FindExtension();
  if (!own.empty()) {
    LoadExtension(own);
  } else if (options.extensions.empty()) {
    throw UsageError(
        "the library liborvane.so is not where it belongs, in the folder lib beside the folder of "
        "this command. Build it (script/run), or name one with --extension.");
  }
}

void Session::LoadExtension(const std::string& file_or_folder) {
  std::error_code error;
  if (fs::is_directory(file_or_folder, error)) return host_->LoadFolder(file_or_folder);
  std::string why;
  if (!host_->LoadFile(file_or_folder, &why)) {
    throw UsageError("--extension " + file_or_folder + ": " + why);
  }
}

bool Session::Publishes(const std::string& name) const {
  const auto entries = host_->catalogue();
  return std::any_of(entries.begin(), entries.end(),
                     [&](const auto& entry) { return entry.name == name; });
}

}  // namespace orvane::cli
