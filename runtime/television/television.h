// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/json.h"
#include "extensions/extension_host.h"
#include "television/runtime_services.h"
#include "television/set_state.h"
#include "television/shifted_clock.h"
#include "television/television_options.h"
#include "tvset/set.h"

namespace orvane::television {

// Hears from a television what the set's own observers (tvset::Observer) do not. Borrowed by it;
// must not call it back.
class TelevisionListener {
 public:
  virtual ~TelevisionListener() = default;

  // Why the web runtime refused a page something: one sentence. On the extension thread.
  virtual void OnExplanation(const std::string& text) = 0;
  // What the host of the extensions warns of: one sentence. Any thread.
  virtual void OnWarning(const std::string& text) = 0;
  // The library, folder or extension that is loaded from now on, which may end the process.
  virtual void OnLoading(const std::string& /*name*/) {}
  // A part of the state changed past the set's observers, or is to be told again. Extension thread.
  virtual void OnTouched(Part /*part*/) {}
};

// One application in front on the set of this process: the set, what the web runtime itself answers
// the application's pages, and the extensions that these use. `orvane exec` and `call` put a page
// of their own on it, the set process the pages of browsers.
//
// One at a time in a process; made, used and destroyed on one thread, which is the extension
// thread. The set runs from construction to destruction, so that its observers may be added
// meanwhile; extensions are there from LoadExtensions to UnloadExtensions.
class Television {
 public:
  // `snapshot` is that of the process before this one; null: there is none. Throws RequestError,
  // tvset::SetError or app::AppError for what cannot be used; no set runs then.
  Television(TelevisionOptions options, ShippedParts shipped, const Json& snapshot,
             TelevisionListener& listener);
  ~Television();  // stops the set
  Television(const Television&) = delete;
  Television& operator=(const Television&) = delete;

  // Once. Throws RequestError or extensions::HostError for what cannot be loaded.
  void LoadExtensions();
  // No page uses an extension any more; may wait for work of theirs. The destructor does it too.
  void UnloadExtensions() { host_.reset(); }

  tvset::Set& set() { return tvset::Set::Current(); }
  extensions::ExtensionHost& host() { return *host_; }
  RuntimeServices& services() { return services_; }
  ShiftedClock& clock() { return *clock_; }
  TelevisionListener& listener() { return listener_; }
  const SetState& state() const { return state_; }
  const TelevisionOptions& options() const { return options_; }
  const std::string& app_id() const { return options_.app.id; }
  pid_t app_pid() const;

  // What could not be used as it was meant, in the profile and in the snapshot.
  const std::vector<std::string>& warnings() const { return warnings_; }
  Json TakeSnapshot() const;  // any thread
  // Name and entry points of each extension, in the order of the pages' scripts.
  Json Catalogue() const;
  // The script of each extension by its name. Loads those that are not loaded yet.
  Json Scripts();

 private:
  // Starts the set, and stops it after everything that uses it.
  struct RunningSet {
    RunningSet(const TelevisionOptions& options, bool goes_on);
    ~RunningSet();
    RunningSet(const RunningSet&) = delete;
    RunningSet& operator=(const RunningSet&) = delete;
  };

  void Restore(const Json& snapshot);
  void Load(const std::filesystem::path& file_or_folder);
  bool Publishes(const std::string& name) const;

  const TelevisionOptions options_;
  const ShippedParts shipped_;
  TelevisionListener& listener_;
  RunningSet running_set_;
  const std::shared_ptr<ShiftedClock> clock_;
  const SetState state_;
  std::vector<std::string> warnings_;
  RuntimeServices services_;
  std::unique_ptr<extensions::ExtensionHost> host_;  // empty: before and after the extensions
};

}  // namespace orvane::television
