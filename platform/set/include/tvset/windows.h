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

// Where among the others a window wants to be.
enum class StackMode { kNone, kBelow, kAbove };

// The window of one application.
struct Window {
  StackMode stack_mode = StackMode::kNone;
  std::map<std::string, std::string> hints;     // as the application gave them; none has an effect
  std::optional<int> quarter_position;          // 0 to 4, as the platform counts; excludes position
  std::optional<std::pair<int, int>> position;  // x and y in pixels; excludes quarter_position
  bool focus_wanted = true;
};

// The windows of the running applications: where they are, and which is in front. Partner of the
// runtime services, which answer an application's requests by it, and of KeyGrabs, which asks for
// the topmost. The setters answer false, and change nothing, for an application that does not run;
// a change is told to Observer::OnWindowChanged on the calling thread. What was set ends with the
// application's run. Any thread.
class TVSET_EXPORT WindowManager {
 public:
  WindowManager(EventHub& events, Applications& applications);  // both borrowed

  Window window(const std::string& app) const;  // as it is at launch, when nothing was set
  bool SetStackMode(const std::string& app, StackMode mode);
  bool SetHint(const std::string& app, const std::string& key, const std::string& value);
  bool MoveTo(const std::string& app, int x, int y);              // pixels of the panel
  bool SetQuarterPosition(const std::string& app, int position);  // false also outside 0 to 4
  // True: takes the focus. False: gives it up if the application has it.
  bool SetFocusWanted(const std::string& app, bool wanted);

  // Running applications in the foreground, the topmost first: windows that want to be above, then
  // the others, then those that want to be below; within these the last raised first.
  std::vector<std::string> stack() const;
  std::string topmost() const;  // empty: no window is shown

  void Forget(const std::string& app);

 private:
  friend class Set;
  void Reset();
  template <typename Change>
  bool Update(const std::string& app, Change change);

  EventHub& events_;
  Applications& applications_;
  mutable std::mutex mutex_;
  std::map<std::string, Window> windows_;  // guarded by mutex_
};

}  // namespace tvset
