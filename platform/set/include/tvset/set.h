// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "tvset/applications.h"
#include "tvset/context_manager.h"
#include "tvset/error.h"
#include "tvset/events.h"
#include "tvset/export.h"
#include "tvset/faults.h"
#include "tvset/features.h"
#include "tvset/input_method.h"
#include "tvset/kernel_markers.h"
#include "tvset/key_grabs.h"
#include "tvset/keys.h"
#include "tvset/log.h"
#include "tvset/paths.h"
#include "tvset/screen_saver.h"
#include "tvset/set_files.h"
#include "tvset/settings.h"
#include "tvset/windows.h"

namespace tvset {

// What a set is started with.
struct Options {
  // Made when it is not there. Empty: as Paths::DefaultStateFolder().
  std::filesystem::path state_folder;
  // The name of a shipped profile ("uhd", "fhd") or the path of a model-config.xml. Empty:
  // $ORVANE_PROFILE, else "uhd".
  std::string profile;
  // The set goes on in this process after the one that it ran in before has died: its settings
  // under "memory/" stay.
  bool goes_on = false;
};

// The simulated set of this process: its state, which the platform's C functions read and change.
// Several processes may run a set on one state folder; they share settings and application data,
// nothing else.
//
// It is never destroyed, since threads and exit handlers of the process may log to the end, and
// owns its services: references to them stay valid while the process lives, and a restart puts them
// back to the state of a set just switched on. Each is the control interface of one service, for
// the runtime, the command line and tests; the platform's functions are what applications and the
// library see of the same state. Any thread, but for Start and Stop, which must not be called while
// the caller holds a lock that an observer or a watcher of a setting may want.
class TVSET_EXPORT Set {
 public:
  // The running set; starts one with default options when none runs, so it may throw as Start does.
  static Set& Current();
  // Replaces the running one. Settings under "memory/" go, unless another live process runs a set
  // on the folder or the set goes on. Throws SetError with a clear text for a profile that cannot
  // be read and a folder that cannot be made; the set that ran before then runs on. It throws as
  // well, and no set runs, when the folder's lock or its old settings are in the way.
  static void Start(const Options& options);
  // Both end the watches of settings, and return when no callback of one runs, unless it is the
  // callback that calls.
  static void Stop();
  // In this process.
  static bool running();
  // Whether a set runs on the folder (empty: as in Options), in this process or another. Changes
  // nothing.
  static bool RunsOn(const std::filesystem::path& state_folder);

  Set(const Set&) = delete;
  Set& operator=(const Set&) = delete;
  ~Set() = delete;

  // The services. Which of the platform's functions fail, and how.
  FaultTable& faults();
  // Who hears of what happens.
  EventHub& events();
  // What was logged, by whatever component. Works while no set runs, too.
  LogBuffer& log();
  // What kind of television it is: system_info reads it.
  FeatureStore& features();
  // What is installed, runs, and has the focus: app_manager, aul, pkgmgrinfo and the check of
  // privileges read it.
  Applications& applications();
  // Keys that components press: VirtualKey.
  KeyInjector& keys();
  // Tasks for the television: app_context_manager.
  ContextManager& context_manager();
  // Shared with the other processes of the folder: vconf.
  Settings& settings();
  // Whether it is on, and when it will be: screensaver.
  ScreenSaver& screen_saver();
  // Where the applications' windows are. No function of the platform leads here: the web runtime
  // answers its pages by it.
  WindowManager& windows();
  // The on-screen keyboard, likewise for the web runtime.
  InputMethod& input_method();
  // Where a key goes, likewise for the web runtime.
  KeyGrabs& key_grabs();
  // What is at the paths of a set's own files.
  SetFiles& files();
  // What was written into the kernel's trace.
  KernelMarkers& kernel_markers();
  // Of the running set. Throws SetError when none runs. The object stays over a restart, which may
  // make another the current one.
  const Paths& paths();
  // The file of the profile in use; empty before the first start.
  std::filesystem::path profile();
  // Makes the running set one of another profile, named as in Options: its features become those of
  // the profile, everything else stays. Throws SetError for one that cannot be read; nothing has
  // changed then.
  void UseProfile(const std::string& profile);

  // Handles that the platform's functions gave out and nobody has destroyed: a leak, where a test
  // ends with one.
  size_t open_app_contexts() const;
  size_t open_package_handles() const;

  // The one object, whether it runs or not: for what needs no state folder, as the log does.
  static Set& Instance();

 private:
  // All the services, in the order in which they need each other.
  struct State;
  Set();
  State* const state_;
};

}  // namespace tvset
