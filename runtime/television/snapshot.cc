// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/snapshot.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "television/fields.h"
#include "television/set_state.h"

namespace orvane::television {

namespace {

using picojson::array;
using picojson::object;
using picojson::value;
using std::chrono::milliseconds;

constexpr int64_t kLowestInt = std::numeric_limits<int>::min();
constexpr int64_t kHighestInt = std::numeric_limits<int>::max();
constexpr int64_t kMostCount = int64_t{1} << 53;

value Text(std::string_view text) { return value(std::string(text)); }
value Number(double number) { return value(number); }

double Milliseconds(std::chrono::nanoseconds time) {
  return static_cast<double>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

array Applications(tvset::Set& set, const InstalledApplications& applications) {
  array rows;
  for (const tvset::Application& application : set.applications().list()) {
    rows.emplace_back(ToJson(applications.WithVersion(application)));
  }
  return rows;
}

// The one raised last comes last.
array Running(tvset::Set& set) {
  array rows;
  std::vector<std::string> order = set.applications().raise_order();
  std::reverse(order.begin(), order.end());
  for (const std::string& id : order) {
    const auto running = set.applications().Running(id);
    if (!running) continue;
    rows.emplace_back(object{{"id", Text(id)}, {"state", Number(running->state)}});
  }
  return rows;
}

// The last reset or key is told as the time on the set's clock, which goes on while no process
// runs.
value ScreenSaver(tvset::Set& set, const ShiftedClock& clock) {
  const tvset::ScreenSaverState saver = set.screen_saver().state();
  const auto since = clock.Now() - saver.idle;
  return value(object{{"owner", Text(saver.app_id)},
                      {"timeoutSeconds", Number(saver.timeout_seconds)},
                      {"resets", Number(static_cast<double>(saver.resets))},
                      {"inputs", Number(static_cast<double>(saver.inputs))},
                      {"sinceMs", Number(Milliseconds(since.time_since_epoch()))},
                      {"clockShiftMs", Number(Milliseconds(clock.shift()))}});
}

// Puts the parts of a snapshot back one by one; a part that fails leaves the others alone.
class Restorer {
 public:
  Restorer(const Fields& snapshot, tvset::Set& set) : snapshot_(snapshot), set_(set) {}

  void Applications(const std::string& main_app, pid_t main_pid,
                    InstalledApplications& applications) {
    ForEach("applications", [&](const Fields& row) {
      InstalledApplication installed = ReadApplication(row);
      // The server says what the main application is.
      if (installed.application.id != main_app) applications.Install(installed);
    });
    if (!snapshot_.Has("running")) return;
    set_.applications().Terminate(main_app);
    ForEach("running", [&](const Fields& row) {
      const std::string& id = row.Text("id");
      set_.applications().Launch(id, id == main_app ? main_pid : 0);
    });
    // Each launch sends the one before it to the background.
    ForEach("running", [&](const Fields& row) {
      set_.applications().SetState(row.Text("id"), static_cast<int>(row.Integer("state", 0, 7)));
    });
  }

  // After the windows, which may give the focus away.
  void Focus() {
    Guard([&] {
      const std::string& focused = snapshot_.Text("focused");
      if (focused.empty()) return set_.applications().ClearFocus();
      // Taking the focus raises the application and may change its state.
      const auto state = set_.applications().State(focused);
      if (set_.applications().focused() != focused) set_.applications().SetFocus(focused);
      if (state) set_.applications().SetState(focused, *state);
    });
  }

  void Profile() {
    Guard([&] {
      const std::string& profile = snapshot_.Text("profile");
      if (profile != set_.profile().string()) set_.UseProfile(profile);
    });
  }

  // As they were changed since the profile was read.
  void Features() {
    if (!snapshot_.Has("features")) return;
    for (const tvset::Feature& feature : set_.features().list()) {
      set_.features().Remove(feature.key);
    }
    ForEach("features", [&](const Fields& row) {
      const bool platform = row.Text("group") == GroupName(tvset::FeatureGroup::kPlatform);
      set_.features().Set(row.Text("key"), row.Text("type"), row.Text("text"),
                          platform ? tvset::FeatureGroup::kPlatform : tvset::FeatureGroup::kCustom);
    });
  }

  void Windows() {
    Guard([&] {
      const Fields windows = snapshot_.Object("windows");
      for (const value& row : windows.Array("list")) Window(Fields(row, "a window"));
    });
  }

  void InputMethod() {
    Guard([&] {
      const Fields state = snapshot_.Object("inputMethod");
      std::vector<std::string> words;
      for (const value& word : state.Array("recommendedWords")) words.push_back(word.to_str());
      tvset::InputMethod& input_method = set_.input_method();
      input_method.SetRecommendedWords(words);
      input_method.SetRecommendedWordsType(state.Flag("recommendedEnabled", false) ? 1 : 0);
      // A keyboard that stays where it is may have been moved before.
      if (state.Flag("positioned", false)) {
        input_method.SetPosition(Int(state, "x"), Int(state, "y"), Int(state, "align"));
      }
      input_method.set_dynamic_style(state.Flag("dynamic", true));
    });
  }

  void KeyGrabs() {
    ForEach("keyGrabs", [&](const Fields& row) {
      for (const tvset::GrabMode mode :
           {tvset::GrabMode::kNormal, tvset::GrabMode::kTopmost, tvset::GrabMode::kRegistered}) {
        if (row.Text("mode") != GrabModeName(mode)) continue;
        set_.key_grabs().Grab(row.Text("app"), row.Text("key"), mode);
      }
    });
  }

  void ScreenSaver(ShiftedClock& clock) {
    Guard([&] {
      const Fields state = snapshot_.Object("screenSaver");
      const auto count = [&](const char* name, int64_t most) {
        return state.Integer(name, 0, most);
      };
      clock.Advance(milliseconds(count("clockShiftMs", ShiftedClock::kMostShift.count())));
      tvset::ScreenSaverState earlier;
      earlier.app_id = state.Text("owner");
      earlier.timeout_seconds = static_cast<int>(count("timeoutSeconds", kHighestInt));
      earlier.resets = static_cast<uint64_t>(count("resets", kMostCount));
      earlier.inputs = static_cast<uint64_t>(count("inputs", kMostCount));
      const milliseconds since(count("sinceMs", 2 * ShiftedClock::kMostShift.count()));
      earlier.idle = std::max(clock.Now().time_since_epoch() - since, std::chrono::nanoseconds(0));
      set_.screen_saver().GoOn(earlier);
    });
  }

  void Faults() {
    ForEach("faults", [&](const Fields& row) {
      const bool once = row.Text("mode") == FaultModeName(tvset::FaultMode::kOnce);
      set_.faults().Fail(row.Text("function"), Int(row, "code"),
                         once ? tvset::FaultMode::kOnce : tvset::FaultMode::kAlways,
                         static_cast<uint64_t>(row.Integer("hits", 0, kMostCount, 0)));
    });
  }

  std::vector<std::string> TakeWarnings() { return std::move(warnings_); }

 private:
  static int Int(const Fields& fields, const std::string& name) {
    return static_cast<int>(fields.Integer(name, kLowestInt, kHighestInt));
  }

  template <typename Body>
  void Guard(Body body) {
    try {
      body();
    } catch (const std::exception& error) {
      warnings_.push_back(std::string("The set is not as it was before: ") + error.what());
    }
  }

  template <typename Body>
  void ForEach(const std::string& name, Body body) {
    Guard([&] {
      for (const value& row : snapshot_.Array(name)) {
        Guard([&] { body(Fields(row, "an entry of " + name)); });
      }
    });
  }

  void Window(const Fields& row) {
    const std::string& app = row.Text("app");
    tvset::WindowManager& windows = set_.windows();
    for (const tvset::StackMode mode :
         {tvset::StackMode::kNone, tvset::StackMode::kBelow, tvset::StackMode::kAbove}) {
      if (row.Text("stackMode") == StackModeName(mode)) windows.SetStackMode(app, mode);
    }
    if (row.Has("quarterPosition")) {
      windows.SetQuarterPosition(app, static_cast<int>(row.Integer("quarterPosition", 0, 4)));
    }
    const array& position = row.Array("position");
    if (position.size() == 2) {
      const object pair{{"x", position[0]}, {"y", position[1]}};
      const Fields coordinates(pair, "a window's position");
      windows.MoveTo(app, Int(coordinates, "x"), Int(coordinates, "y"));
    }
    for (const auto& [key, text] : row.Object("hints").object()) {
      windows.SetHint(app, key, text.to_str());
    }
    if (!row.Flag("focusWanted", true)) windows.SetFocusWanted(app, false);
  }

  const Fields& snapshot_;
  tvset::Set& set_;
  std::vector<std::string> warnings_;
};

}  // namespace

value TakeSnapshot(tvset::Set& set, const InstalledApplications& applications,
                   const ShiftedClock& clock) {
  const SetState state(set, applications, "");
  return value(object{{"profile", Text(set.profile().string())},
                      {"features", state.ValueOf(Part::kFeatures)},
                      {"applications", value(Applications(set, applications))},
                      {"running", value(Running(set))},
                      {"focused", Text(set.applications().focused())},
                      {"windows", state.ValueOf(Part::kWindows)},
                      {"inputMethod", state.ValueOf(Part::kInputMethod)},
                      {"keyGrabs", state.ValueOf(Part::kKeyGrabs)},
                      {"screenSaver", ScreenSaver(set, clock)},
                      {"faults", state.ValueOf(Part::kFaults)}});
}

std::vector<std::string> RestoreSnapshot(const value& snapshot, const std::string& main_app,
                                         pid_t main_pid, tvset::Set& set,
                                         InstalledApplications& applications, ShiftedClock& clock) {
  const Fields fields(snapshot, "the snapshot");
  Restorer restorer(fields, set);
  restorer.Profile();
  restorer.Features();
  restorer.Applications(main_app, main_pid, applications);
  restorer.Windows();
  restorer.Focus();
  restorer.InputMethod();
  restorer.KeyGrabs();
  restorer.ScreenSaver(clock);
  restorer.Faults();
  return restorer.TakeWarnings();
}

}  // namespace orvane::television
