// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

class Applications;

// Where among the others a window wants to be: among them, below or above them.
enum class StackMode { kNone, kBelow, kAbove };

// The window of one application, as the application asked for it. Everything has its first value
// while it has asked for nothing.
struct Window {
  // Against the windows of the others, see WindowManager::stack.
  StackMode stack_mode = StackMode::kNone;
  // By key. As the application gave them; none has an effect.
  std::map<std::string, std::string> hints;
  // 0 to 4, as the platform counts; excludes position.
  std::optional<int> quarter_position;
  // x and y in pixels of the panel; excludes quarter_position.
  std::optional<std::pair<int, int>> position;
  // False: the application gave the focus up, and has not taken it again.
  bool focus_wanted = true;
};

// The windows of the running applications: where they are, and which is in front. Partner of the
// runtime services, which answer an application's requests by it, and of KeyGrabs, which asks for
// the topmost. The setters answer false, and change nothing, for an application that does not run;
// a change is told to Observer::OnWindowChanged on the calling thread. What was set ends with the
// application's run. Owned by Set. Any thread.
class TVSET_EXPORT WindowManager {
 public:
  // Both borrowed.
  WindowManager(EventHub& events, Applications& applications);

  // A copy as it is now, of any application: as it is at launch when nothing was set.
  Window window(const std::string& app) const;
  // Its place from now on, see stack(). The window need not be shown.
  bool SetStackMode(const std::string& app, StackMode mode);
  // Adds or replaces; hints are kept for people to see. How many there may be is for the caller to
  // bound.
  bool SetHint(const std::string& app, const std::string& key, const std::string& value);
  // Pixels of the panel, of the window's top left corner; a window may be partly outside.
  bool MoveTo(const std::string& app, int x, int y);
  // One of the platform's places for a quarter of the panel. False also outside 0 to 4.
  bool SetQuarterPosition(const std::string& app, int position);
  // True: takes the focus. False: gives it up if the application has it.
  bool SetFocusWanted(const std::string& app, bool wanted);

  // Running applications in the foreground, the topmost first: windows that want to be above, then
  // the others, then those that want to be below; within these the last raised first.
  std::vector<std::string> stack() const;
  // The first of them. Empty: no window is shown.
  std::string topmost() const;

  // Everything that the application asked for; told when there was anything. For Applications, at
  // the end of its run.
  void Forget(const std::string& app);

 private:
  friend class Set;
  void Reset();
  // The frame of the setters: `change(Window&)` runs under the lock.
  template <typename Change>
  bool Update(const std::string& app, Change change);

  EventHub& events_;
  Applications& applications_;
  mutable std::mutex mutex_;
  std::map<std::string, Window> windows_;  // guarded by mutex_
};

}  // namespace tvset
