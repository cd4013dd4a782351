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

picojson::array Texts(const std::vector<std::string>& texts) {
  picojson::array array;
  for (const std::string& text : texts) array.emplace_back(text);
  return array;
}

}  // namespace

Television::RunningSet::RunningSet(const StartOptions& options, bool goes_on) {
  tvset::Set::Start({options.state_folder, options.profile, goes_on});
}

Television::RunningSet::~RunningSet() { tvset::Set::Stop(); }

Television::Television(StartOptions options, const picojson::value& snapshot, const Home& home,
                       Outbox& outbox)
    : options_(std::move(options)),
      running_set_(options_, !snapshot.is<picojson::null>()),
      clock_(ShiftedClock::Create()),
      applications_(set().applications()),
      state_(set(), applications_, options_.app.application.id) {
  set().screen_saver().set_clock(clock_);
  set().key_grabs().AddKnownKeys(home.device_keys);
  warnings_ = set().features().warnings();
  LaunchApplication();
  Restore(snapshot);
  events_ = std::make_unique<EventStream>(
      set().events(), state_, [this] { return TakeSnapshot(set(), applications_, *clock_); },
      options_.last_log_line, outbox);
  services_ = std::make_unique<television::RuntimeServices>(
      set(), options_.app.application.id,
      [this](const std::string& text) { events_->Explain(text); });
  MakeHost();
  LoadExtensions(home, outbox);
  contexts_ = std::make_unique<Contexts>(*host_, outbox);
}

Television::~Television() = default;

void Television::LaunchApplication() {
  const std::string& id = options_.app.application.id;
  applications_.Install(options_.app);
  set().applications().Launch(id, options_.pid != 0 ? options_.pid : getpid());
}

// After a snapshot the set fails as it did when that was taken, not as it was started to.
void Television::Restore(const picojson::value& snapshot) {
  if (snapshot.is<picojson::null>()) {
    for (const tvset::Fault& fault : options_.faults) {
      set().faults().Fail(fault.function, fault.code, fault.mode);
    }
    return;
  }
  const pid_t pid = options_.pid != 0 ? options_.pid : getpid();
  for (std::string& warning :
       RestoreSnapshot(snapshot, options_.app.application.id, pid, set(), applications_, *clock_)) {
    warnings_.push_back(std::move(warning));
  }
}

void Television::MakeHost() {
  extensions::HostOptions options;
  options.app_id = options_.app.application.id;
  options.warn = [this](const std::string& text) { events_->Explain("Warning: " + text); };
  options.access_check = [this](const std::string& api) { return services_->HasPrivilege(api); };
  options.sync_deadline = options_.deadline;
  host_ = std::make_unique<extensions::ExtensionHost>(std::move(options));
}

// The given ones come first, so that a library that is being worked on takes the place of the
// project's own.
void Television::LoadExtensions(const Home& home, Outbox& outbox) {
  for (const std::string& given : options_.extensions) LoadExtension(given, outbox);
  if (Publishes(kOwnExtension)) return;
  if (!home.extension.empty()) return LoadExtension(home.extension, outbox);
  if (!options_.extensions.empty()) return;
  throw RequestError(
      "The library liborvane.so is not where it belongs, in the folder lib beside the folder of "
      "this command. Build it (script/run), or name one with --extension.");
}

void Television::LoadExtension(const fs::path& file_or_folder, Outbox& outbox) {
  outbox.Handling(0, "load", 0, file_or_folder.string(), "");
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

// Every extension is loaded for it: a page's script text holds the script of each.
picojson::object Television::Started(Outbox& outbox) {
  picojson::object scripts;
  for (const auto& entry : host_->catalogue()) {
    outbox.Handling(0, "load", 0, entry.name, "");
    if (const extensions::Extension* const extension = host_->Find(entry.name)) {
      scripts[entry.name] = picojson::value(extension->api());
    }
  }
  outbox.Handled();
  picojson::array catalogue;
  for (const auto& entry : host_->catalogue()) {
    catalogue.emplace_back(
        picojson::object{{"name", picojson::value(entry.name)},
                         {"entryPoints", picojson::value(Texts(entry.entry_points))}});
  }
  return {{"op", picojson::value("started")},
          {"catalogue", picojson::value(catalogue)},
          {"scripts", picojson::value(scripts)},
          {"warnings", picojson::value(Texts(warnings_))}};
}

}  // namespace orvane::television
