// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/snapshot.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <utility>

namespace orvane::television {

namespace {

using std::chrono::milliseconds;

struct RunningRow {
  std::string id;
  int state = 0;
};
template <class Map>
void MapFields(Map& map, RunningRow& row) {
  map("id", row.id);
  map("state", row.state, base::Range{0, 7});
}

// The last reset or key is told as the time on the set's clock, which goes on while no process
// runs.
struct ScreenSaverWait {
  tvset::ScreenSaverState state;
  int64_t since_ms = 0;
  int64_t clock_shift_ms = 0;
};
template <class Map>
void MapFields(Map& map, ScreenSaverWait& wait) {
  constexpr int64_t kMost = ShiftedClock::kMostShift.count();
  map("owner", wait.state.app_id);
  map("timeoutSeconds", wait.state.timeout_seconds,
      base::Range{0, std::numeric_limits<int>::max()});
  map("resets", wait.state.resets);
  map("inputs", wait.state.inputs);
  map("sinceMs", wait.since_ms, base::Range{0, 2 * kMost});
  map("clockShiftMs", wait.clock_shift_ms, base::Range{0, kMost});
}

int64_t Milliseconds(std::chrono::nanoseconds time) {
  return std::chrono::duration_cast<milliseconds>(time).count();
}

// The one raised last comes last.
std::vector<RunningRow> Running(tvset::Set& set) {
  std::vector<RunningRow> rows;
  std::vector<std::string> order = set.applications().raise_order();
  std::reverse(order.begin(), order.end());
  for (const std::string& id : order) {
    const auto running = set.applications().Running(id);
    if (running) rows.push_back({id, running->state});
  }
  return rows;
}

ScreenSaverWait Wait(tvset::Set& set, const ShiftedClock& clock) {
  ScreenSaverWait wait;
  wait.state = set.screen_saver().state();
  wait.since_ms = Milliseconds((clock.Now() - wait.state.idle).time_since_epoch());
  wait.clock_shift_ms = Milliseconds(clock.shift());
  return wait;
}

// Puts the parts of a snapshot back one by one; a part that fails leaves the others alone.
class Restorer {
 public:
  explicit Restorer(const Json& snapshot) : snapshot_(snapshot) {}

  // Calls back with the part of that name, read as the type that the callback takes.
  template <class Callback>
  void operator()(const char* name, Callback callback) {
    Restore(name, &Callback::operator(), callback);
  }
  std::vector<std::string> TakeWarnings() { return std::move(warnings_); }

 private:
  template <class Callback, class Value>
  void Restore(const char* name, void (Callback::*)(Value) const, const Callback& callback) {
    try {
      std::decay_t<Value> part;
      base::fields::Reader(snapshot_, "the snapshot")(name, part);
      callback(std::move(part));
    } catch (const std::exception& error) {
      warnings_.push_back(std::string("The set is not as it was before: ") + error.what());
    }
  }

  const Json& snapshot_;
  std::vector<std::string> warnings_;
};

void RestoreDevice(Restorer& restore, tvset::Set& set) {
  restore("profile", [&](const std::string& profile) {
    if (profile != set.profile().string()) set.UseProfile(profile);
  });
  // As they were changed since the profile was read.
  restore("features", [&](const std::vector<tvset::Feature>& features) {
    for (const tvset::Feature& feature : set.features().list()) set.features().Remove(feature.key);
    for (const tvset::Feature& feature : features) {
      set.features().Set(feature.key, feature.type, feature.text, feature.group);
    }
  });
}

void RestoreApplications(Restorer& restore, const std::string& main_app, pid_t main_pid,
                         tvset::Applications& applications) {
  restore("applications", [&](const std::vector<tvset::Application>& rows) {
    for (const tvset::Application& application : rows) {
      // The server says what the main application is.
      if (application.id != main_app) applications.Install(application);
    }
  });
  restore("running", [&](const std::vector<RunningRow>& rows) {
    applications.Terminate(main_app);
    for (const RunningRow& row : rows) {
      applications.Launch(row.id, row.id == main_app ? main_pid : 0);
    }
    // Each launch sends the one before it to the background.
    for (const RunningRow& row : rows) applications.SetState(row.id, row.state);
  });
}

void RestoreWindow(const std::string& app, const tvset::Window& window,
                   tvset::WindowManager& windows) {
  windows.SetStackMode(app, window.stack_mode);
  if (window.quarter_position) windows.SetQuarterPosition(app, *window.quarter_position);
  if (window.position) windows.MoveTo(app, window.position->first, window.position->second);
  for (const auto& [key, text] : window.hints) windows.SetHint(app, key, text);
  if (!window.focus_wanted) windows.SetFocusWanted(app, false);
}

void RestoreScreen(Restorer& restore, tvset::Set& set) {
  restore("windows", [&](const WindowsState& windows) {
    for (const WindowRow& row : windows.list) RestoreWindow(row.app, row.window, set.windows());
  });
  // After the windows, which may give the focus away.
  restore("focused", [&](const std::string& focused) {
    if (focused.empty()) return set.applications().ClearFocus();
    // Taking the focus raises the application and may change its state.
    const auto state = set.applications().State(focused);
    if (set.applications().focused() != focused) set.applications().SetFocus(focused);
    if (state) set.applications().SetState(focused, *state);
  });
}

void RestoreServices(Restorer& restore, tvset::Set& set, ShiftedClock& clock) {
  restore("inputMethod", [&](const tvset::InputMethodState& state) {
    tvset::InputMethod& input_method = set.input_method();
    input_method.SetRecommendedWords(state.recommended_words);
    input_method.SetRecommendedWordsType(state.recommended_words_enabled ? 1 : 0);
    // A keyboard that stays where it is may have been moved before.
    if (state.positioned) input_method.SetPosition(state.x, state.y, state.align);
    input_method.set_dynamic_style(state.dynamic_style);
  });
  restore("keyGrabs", [&](const std::vector<tvset::KeyGrab>& grabs) {
    for (const tvset::KeyGrab& grab : grabs) {
      set.key_grabs().Grab(grab.app, grab.key_name, grab.mode);
    }
  });
  restore("screenSaver", [&](ScreenSaverWait wait) {
    clock.Advance(milliseconds(wait.clock_shift_ms));
    const auto idle = clock.Now().time_since_epoch() - milliseconds(wait.since_ms);
    wait.state.idle = std::max(idle, std::chrono::nanoseconds(0));
    set.screen_saver().GoOn(wait.state);
  });
  restore("faults", [&](const std::vector<tvset::Fault>& faults) {
    for (const tvset::Fault& fault : faults) {
      set.faults().Fail(fault.function, fault.code, fault.mode, fault.hits);
    }
  });
}

}  // namespace

Json TakeSnapshot(tvset::Set& set, const SetState& state, const ShiftedClock& clock) {
  return {{"profile", set.profile().string()},
          {"features", state.ValueOf(Part::kFeatures)},
          {"applications", base::ToJson(set.applications().list())},
          {"running", base::ToJson(Running(set))},
          {"focused", state.ValueOf(Part::kFocus)},
          {"windows", state.ValueOf(Part::kWindows)},
          {"inputMethod", state.ValueOf(Part::kInputMethod)},
          {"keyGrabs", state.ValueOf(Part::kKeyGrabs)},
          {"screenSaver", base::ToJson(Wait(set, clock))},
          {"faults", state.ValueOf(Part::kFaults)}};
}

std::vector<std::string> RestoreSnapshot(const Json& snapshot, const std::string& main_app,
                                         pid_t main_pid, tvset::Set& set, ShiftedClock& clock) {
  Restorer restore(snapshot);
  RestoreDevice(restore, set);
  RestoreApplications(restore, main_app, main_pid, set.applications());
  RestoreScreen(restore, set);
  RestoreServices(restore, set, clock);
  return restore.TakeWarnings();
}

}  // namespace orvane::television
