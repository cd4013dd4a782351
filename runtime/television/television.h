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

// Hears from a television what the set's own observers (tvset::Observer) do not: a person gets to
// read it. Borrowed by the television, which it outlives; must not call it back.
class TelevisionListener {
 public:
  virtual ~TelevisionListener() = default;

  // Why the web runtime refused a page something: one sentence with the cause and the remedy. On
  // the extension thread, within the page's request.
  virtual void OnExplanation(const std::string& text) = 0;
  // What the host of the extensions warns of, such as a library that breaks a rule of the C
  // interface: one sentence. Any thread.
  virtual void OnWarning(const std::string& text) = 0;
  // The library, folder or extension that is loaded from now on: foreign code runs, which may end
  // the process. Nobody tells when it is loaded; the next one begins, or LoadExtensions or Scripts
  // returns. On the extension thread.
  virtual void OnLoading(const std::string& /*name*/) {}
  // A part of the state changed past the set's observers, as a clock does that was moved, or is to
  // be told again. On the extension thread.
  virtual void OnTouched(Part /*part*/) {}
};

// One application in front on the set of this process: the set, what the web runtime itself answers
// the application's pages, and the extensions that these use. `orvane exec` and `call` put a page
// of their own on it, the set process the pages of browsers; whoever owns it sees to their end
// before that of the extensions.
//
// One at a time in a process, since the set is the process's; made, used and destroyed on one
// thread, which is the extension thread. The set runs from construction to destruction, so that its
// observers may be added meanwhile, before anything of the library runs; extensions are there from
// LoadExtensions to UnloadExtensions.
//
// Starts, as the constructor does it: the set with its profile; the clock and the device's keys;
// the application, installed and launched in front; then the snapshot, or else the options' faults.
class Television {
 public:
  // `snapshot` is that of the process before this one, see TakeSnapshot; null: there is none. What
  // of it cannot be used is left out, with a warning. Borrows the listener.
  //
  // Throws RequestError for a fault that is none, and tvset::SetError for a profile, a folder, an
  // application or a function that the set cannot use; no set runs then.
  Television(TelevisionOptions options, ShippedParts shipped, const Json& snapshot,
             TelevisionListener& listener);
  ~Television();  // stops the set
  Television(const Television&) = delete;
  Television& operator=(const Television&) = delete;

  // The options' libraries, then the program's own unless one of those publishes the same name: a
  // library that is being worked on takes its place. Those of a folder that have metadata there are
  // loaded when a page first uses them.
  //
  // Once. Throws RequestError or extensions::HostError for what cannot be loaded, and for want of a
  // library; those before it are loaded then.
  void LoadExtensions();
  // No page uses an extension any more; may wait for work of theirs. host() is gone after it. The
  // destructor does it too, so that a caller needs it only to hear what they still say.
  void UnloadExtensions() { host_.reset(); }

  // The parts. References stay valid as long as this object lives, but for host(), which is there
  // while extensions are.
  tvset::Set& set() { return *set_; }
  extensions::ExtensionHost& host() { return *host_; }
  RuntimeServices& services() { return services_; }
  ShiftedClock& clock() { return *clock_; }
  TelevisionListener& listener() { return listener_; }
  const SetState& state() const { return state_; }
  const TelevisionOptions& options() const { return options_; }
  const std::string& app_id() const { return options_.app.id; }
  // The process that the platform's functions know as the application's. Never 0.
  pid_t app_pid() const;

  // What could not be used as it was meant, in the profile and in the snapshot: a sentence each.
  // Fixed after construction.
  const std::vector<std::string>& warnings() const { return warnings_; }

  // For the constructor of a television in the next process, should this one die. Any thread.
  Json TakeSnapshot() const;

  // A list of {"name","entryPoints"}, one per extension in the order of the pages' scripts.
  Json Catalogue() const;
  // An object with the script of each extension by its name. Loads those that are not loaded yet;
  // one that cannot be loaded is not among them, and the host has warned of it.
  Json Scripts();

 private:
  void Restore(const Json& snapshot);
  void Load(const std::filesystem::path& file_or_folder);
  bool Publishes(const std::string& name) const;

  // Fixed after construction; the order is that in which they begin, and they end the other way
  // round: the set after all that uses it, the extensions first.
  const TelevisionOptions options_;
  const ShippedParts shipped_;
  TelevisionListener& listener_;
  const std::shared_ptr<tvset::Set> set_;  // stops it
  const std::shared_ptr<ShiftedClock> clock_;
  const SetState state_;
  std::vector<std::string> warnings_;
  RuntimeServices services_;
  // Empty before and after the extensions.
  std::unique_ptr<extensions::ExtensionHost> host_;
};

}  // namespace orvane::television
