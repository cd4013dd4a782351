// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "extensions/extension_host.h"
#include "television/contexts.h"
#include "television/event_stream.h"
#include "television/installed_applications.h"
#include "television/runtime_services.h"
#include "television/set_state.h"
#include "television/shifted_clock.h"
#include "television/start_options.h"
#include "tvset/keys.h"
#include "tvset/set.h"

namespace orvane::television {

// What the executable knows of itself.
struct Home {
  std::filesystem::path extension;            // the project's own; empty: there is none
  std::vector<tvset::RemoteKey> device_keys;  // beyond those of every set
};

// The set that runs in this process, one application in front on it, the extensions and the page
// contexts that use them. One at a time in a process; made, used and destroyed on one thread, which
// is the extension thread. Its destruction closes the contexts, which may wait for work of their
// extensions, and stops the set. Borrows the outbox.
class Television {
 public:
  // `snapshot` is that of the process before this one; null: there is none. Throws RequestError,
  // tvset::SetError or extensions::HostError for what cannot be used; no set runs then.
  Television(StartOptions options, const picojson::value& snapshot, const Home& home,
             Outbox& outbox);
  ~Television();
  Television(const Television&) = delete;
  Television& operator=(const Television&) = delete;

  // The answer to the server's "start".
  picojson::object Started(Outbox& outbox);

  tvset::Set& set() { return tvset::Set::Current(); }
  extensions::ExtensionHost& host() { return *host_; }
  Contexts& contexts() { return *contexts_; }
  television::RuntimeServices& services() { return *services_; }
  InstalledApplications& applications() { return applications_; }
  const SetState& state() const { return state_; }
  EventStream& events() { return *events_; }
  ShiftedClock& clock() { return *clock_; }
  const StartOptions& options() const { return options_; }

 private:
  // Starts the set, and stops it after everything that uses it.
  struct RunningSet {
    RunningSet(const StartOptions& options, bool goes_on);
    ~RunningSet();
    RunningSet(const RunningSet&) = delete;
    RunningSet& operator=(const RunningSet&) = delete;
  };

  void LaunchApplication();
  void Restore(const picojson::value& snapshot);
  void MakeHost();
  void LoadExtensions(const Home& home, Outbox& outbox);
  void LoadExtension(const std::filesystem::path& file_or_folder, Outbox& outbox);
  bool Publishes(const std::string& name) const;

  const StartOptions options_;
  RunningSet running_set_;
  const std::shared_ptr<ShiftedClock> clock_;
  InstalledApplications applications_;
  const SetState state_;
  std::vector<std::string> warnings_;
  std::unique_ptr<EventStream> events_;
  std::unique_ptr<television::RuntimeServices> services_;
  std::unique_ptr<extensions::ExtensionHost> host_;
  std::unique_ptr<Contexts> contexts_;
};

}  // namespace orvane::television
