// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/television.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "television/request_error.h"
#include "television/snapshot.h"

namespace orvane::television {

namespace fs = std::filesystem;

namespace {

constexpr char kOwnExtension[] = "dravelt.orvane";

// Runs for as long as anyone has it.
std::shared_ptr<tvset::Set> RunSet(const TelevisionOptions& options, bool goes_on) {
  tvset::Set::Start({options.state_folder, options.profile, goes_on});
  return {&tvset::Set::Current(), [](tvset::Set*) { tvset::Set::Stop(); }};
}

}  // namespace

Television::Television(TelevisionOptions options, ShippedParts shipped, const Json& snapshot,
                       TelevisionListener& listener)
    : options_(std::move(options)),
      shipped_(std::move(shipped)),
      listener_(listener),
      set_(RunSet(options_, !snapshot.is_null())),
      clock_(ShiftedClock::Create()),
      state_(set(), app_id()),
      services_(set(), app_id(),
                [this](const std::string& text) { listener_.OnExplanation(text); }) {
  set().screen_saver().set_clock(clock_);
  set().key_grabs().AddKnownKeys(shipped_.device_keys);
  warnings_ = set().features().warnings();
  set().applications().Install(options_.app);
  set().applications().Launch(app_id(), app_pid());
  Restore(snapshot);
}

Television::~Television() { UnloadExtensions(); }

pid_t Television::app_pid() const { return options_.pid != 0 ? options_.pid : getpid(); }

// After a snapshot the set fails as it did when that was taken, not as it was started to.
void Television::Restore(const Json& snapshot) {
  if (snapshot.is_null()) {
    for (const std::string& text : options_.faults) {
      const tvset::Fault fault = ParseFault(text);
      set().faults().Fail(fault.function, fault.code, fault.mode);
    }
    return;
  }
  for (std::string& warning : RestoreSnapshot(snapshot, app_id(), app_pid(), set(), *clock_)) {
    warnings_.push_back(std::move(warning));
  }
}

Json Television::TakeSnapshot() const { return television::TakeSnapshot(*set_, state_, *clock_); }

// The given ones come first, so that a library that is being worked on takes the place of the
// project's own.
void Television::LoadExtensions() {
  extensions::HostOptions options;
  options.app_id = app_id();
  options.warn = [this](const std::string& text) { listener_.OnWarning(text); };
  options.access_check = [this](const std::string& api) { return services_.HasPrivilege(api); };
  options.sync_deadline = std::chrono::milliseconds(options_.deadline_ms);
  host_ = std::make_unique<extensions::ExtensionHost>(std::move(options));
  for (const std::string& given : options_.extensions) Load(given);
  if (Publishes(kOwnExtension)) return;
  if (!shipped_.extension.empty()) return Load(shipped_.extension);
  if (!options_.extensions.empty()) return;
  throw RequestError(
      "liborvane.so is not where it belongs, in the folder lib beside the folder of this command. "
      "Build it (script/run), or name one with --extension.");
}

void Television::Load(const fs::path& file_or_folder) {
  listener_.OnLoading(file_or_folder.string());
  std::error_code error;
  if (fs::is_directory(file_or_folder, error)) return host_->LoadFolder(file_or_folder);
  std::string why;
  if (!host_->LoadFile(file_or_folder, &why)) {
    throw RequestError("--extension " + file_or_folder.string() + ": " + why);
  }
}

bool Television::Publishes(const std::string& name) const {
  const auto entries = host_->catalogue();
  return std::any_of(entries.begin(), entries.end(),
                     [&](const auto& entry) { return entry.name == name; });
}

Json Television::Catalogue() const {
  Json catalogue = Json::array();
  for (const auto& entry : host_->catalogue()) {
    catalogue.push_back({{"name", entry.name}, {"entryPoints", entry.entry_points}});
  }
  return catalogue;
}

Json Television::Scripts() {
  Json scripts = Json::object();
  for (const auto& entry : host_->catalogue()) {
    listener_.OnLoading(entry.name);
    if (const extensions::Extension* const extension = host_->Find(entry.name)) {
      scripts[entry.name] = extension->api();
    }
  }
  return scripts;
}

}  // namespace orvane::television
