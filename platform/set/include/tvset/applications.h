// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

class Paths;

// An application as it is installed, most of it from its config.xml. Plain data: what it names is
// checked by Applications::Install.
struct Application {
  // "<package>.<name>".
  std::string id;
  // Names the application's folder under the application root.
  std::string package;
  // For people.
  std::string name;
  // Where its config.xml is; empty: it has no files here.
  std::filesystem::path folder;
  // Key and value, as it declares them.
  std::vector<std::pair<std::string, std::string>> metadata;
  // URIs, as config.xml declares them. What an application is allowed follows from them alone.
  std::vector<std::string> privileges;
  // Empty: its config.xml has none.
  std::optional<std::string> version{};
};

// A running application as it was when it was asked for: a copy, which does not follow what becomes
// of it, as the contexts of the platform do not.
struct RunningApplication {
  std::string id;
  // 0: it has no process of its own here.
  pid_t pid = 0;
  // An app_state_e, or a number above those, see Applications::SetState.
  int state = 0;
};

// The applications installed on the set, and which of them run. What is installed is known to this
// process only; an application's data folder outlives it. The platform's application functions read
// it; the runtime installs what it runs, and says what becomes of it.
//
// Methods that take an id throw SetError for an application that is not installed, except those
// that only ask. A change of an application is told to Observer::OnApplicationChanged,
// one of the focus to OnFocusChanged, on the calling thread, before the method returns. A restart
// of the set forgets everything but the data folders. Owned by Set. Any thread.
class TVSET_EXPORT Applications {
 public:
  // Borrowed.
  explicit Applications(EventHub& events);

  // From now on it can be launched. Replaces an installed application of that id, which goes on
  // running if it did. Makes
  // <app root>/<package> with data, cache, tmp and shared in it. Throws SetError for an id or
  // package that cannot name a folder, and for a folder that cannot be made.
  void Install(const Application& application);
  // Terminates it first; its data stays.
  void Uninstall(const std::string& id);
  // A copy of what was installed under the id. Empty: not installed.
  std::optional<Application> Find(const std::string& id) const;
  // Every installed application, by id.
  std::vector<Application> list() const;

  // Running from now on: in the foreground, topmost and focused. The application that had the focus
  // goes to the background. `pid` 0: without a process. One that runs already gets the new process.
  void Launch(const std::string& id, pid_t pid);
  // Contexts report the number as it stands; 5 to 7 are states without a name, and others are
  // refused with SetError. Starts an application that does not run, without a process.
  void SetState(const std::string& id, int app_state);
  // Empty: it does not run.
  std::optional<int> State(const std::string& id) const;
  // As it is now. Empty: it does not run.
  std::optional<RunningApplication> Running(const std::string& id) const;
  // The same into an object that the caller uses again; false when it does not run.
  bool ReadRunning(std::string_view id, RunningApplication* running) const;
  // The one that has the focus; false when nobody has it.
  bool ReadFocused(RunningApplication* running) const;
  // It runs no more: focus, key grabs and window state go with it. No effect when it does not run.
  void Terminate(const std::string& id);

  // Raises it, and brings it to the foreground if it was in the background. Throws for one that
  // does not run.
  void SetFocus(const std::string& id);
  // Nobody has the focus then; the states stay. No effect when nobody has it.
  void ClearFocus();
  // Empty: nobody.
  std::string focused() const;

  // The application that this process was last launched for; empty when there is none.
  std::string IdOfPid(pid_t pid) const;

  // Ids of the running applications, the last raised first, whether or not their windows are shown.
  std::vector<std::string> raise_order() const;

 private:
  friend class Set;
  struct Run {
    pid_t pid = 0;
    int state = 0;
    // Both by clock_: the later one is the higher.
    uint64_t launched = 0;
    uint64_t raised = 0;
  };

  void Reset(const Paths* paths);
  bool ReadLocked(std::string_view id, RunningApplication* running) const;
  // mutex_ held.
  void RequireInstalled(const std::string& id) const;

  EventHub& events_;
  // Fixed after construction: ends what other services hold for the application. Called before the
  // observers hear of it, with no lock held.
  std::function<void(const std::string&)> terminated_;
  mutable std::mutex mutex_;
  const Paths* paths_ = nullptr;                     // guarded by mutex_
  std::map<std::string, Application> installed_;     // guarded by mutex_
  std::map<std::string, Run, std::less<>> running_;  // guarded by mutex_
  std::string focused_;                              // guarded by mutex_
  uint64_t clock_ = 0;  // guarded by mutex_; counts launches and raises
};

}  // namespace tvset
