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

// An application as it is installed, most of it from its config.xml.
struct Application {
  std::string id;       // "<package>.<name>"
  std::string package;  // names the application's folder under the application root
  std::string name;
  std::filesystem::path folder;  // where its config.xml is; empty: it has no files here
  std::vector<std::pair<std::string, std::string>> metadata;  // key and value, as it declares them
  std::vector<std::string> privileges;                        // URIs
  std::optional<std::string> version{};                       // empty: its config.xml has none
};

// A running application as it was when it was asked for.
struct RunningApplication {
  std::string id;
  pid_t pid = 0;  // 0: it has no process of its own here
  int state = 0;  // app_state_e
};

// The applications installed on the set, and which of them run. What is installed is known to this
// process only; an application's data folder outlives it. The platform's application functions read
// it; the runtime installs what it runs, and says what becomes of it.
//
// Methods that take an id throw SetError for an application that is not installed, except those
// that only ask. A change of an application is told to Observer::OnApplicationChanged,
// one of the focus to OnFocusChanged, on the calling thread, before the method returns. A restart
// of the set forgets everything but the data folders. Any thread.
class TVSET_EXPORT Applications {
 public:
  explicit Applications(EventHub& events);  // borrowed

  // Replaces an installed application of that id, which goes on running if it did. Makes
  // <app root>/<package> with data, cache, tmp and shared in it. Throws SetError for an id or
  // package that cannot name a folder, and for a folder that cannot be made.
  void Install(const Application& application);
  void Uninstall(const std::string& id);  // terminates it first; its data stays
  std::optional<Application> Find(const std::string& id) const;  // empty: not installed
  std::vector<Application> list() const;                         // by id

  // Running from now on: in the foreground, topmost and focused. The application that had the focus
  // goes to the background. `pid` 0: without a process. One that runs already gets the new process.
  void Launch(const std::string& id, pid_t pid);
  // Contexts report the number as it stands; 5 to 7 are states without a name, and others are
  // refused with SetError. Starts an application that does not run, without a process.
  void SetState(const std::string& id, int app_state);
  std::optional<int> State(const std::string& id) const;                   // empty: it does not run
  std::optional<RunningApplication> Running(const std::string& id) const;  // empty: as State
  // The same into an object that the caller uses again; false when it does not run.
  bool ReadRunning(std::string_view id, RunningApplication* running) const;
  bool ReadFocused(RunningApplication* running) const;
  // It runs no more: focus, key grabs and window state go with it. No effect when it does not run.
  void Terminate(const std::string& id);

  // Raises it, and brings it to the foreground if it was in the background. Throws for one that
  // does not run.
  void SetFocus(const std::string& id);
  void ClearFocus();
  std::string focused() const;  // empty: nobody

  // The application that this process was last launched for; empty when there is none.
  std::string IdOfPid(pid_t pid) const;

  // Running applications, the last raised first.
  std::vector<std::string> raise_order() const;

 private:
  friend class Set;
  struct Run {
    pid_t pid = 0;
    int state = 0;
    uint64_t launched = 0;
    uint64_t raised = 0;
  };

  void Reset(const Paths* paths);
  bool ReadLocked(std::string_view id, RunningApplication* running) const;
  void RequireInstalled(const std::string& id) const;  // mutex_ held

  EventHub& events_;
  std::function<void(const std::string&)> terminated_;  // fixed after construction
  mutable std::mutex mutex_;
  const Paths* paths_ = nullptr;                     // guarded by mutex_
  std::map<std::string, Application> installed_;     // guarded by mutex_
  std::map<std::string, Run, std::less<>> running_;  // guarded by mutex_
  std::string focused_;                              // guarded by mutex_
  uint64_t clock_ = 0;  // guarded by mutex_; counts launches and raises
};

}  // namespace tvset
