// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/json_fields.h"
#include "television/set_fields.h"
#include "tvset/set.h"

namespace orvane::television {

// What of the set is told as one when it changes. The comments say what a part's JSON is.
enum class Part {
  // {"name","file","profiles"}: the profile in use, and the names of those that ship.
  kProfile,
  // {"width","height"} in pixels, those that windows are placed in.
  kPanel,
  // A list of features, by key.
  kFeatures,
  // A list of what is installed, by id, each with "running", "state" (app_state_e), "stateName" and
  // "pid", the last three null while it does not run, "pid" also for one without a process.
  kApplications,
  // The id of the application that has the focus; empty: nobody.
  kFocus,
  // See WindowsState.
  kWindows,
  // The on-screen keyboard.
  kInputMethod,
  // A list of grabs, by application.
  kKeyGrabs,
  // A list of settings, see RowOf.
  kSettings,
  // {"owner","timeoutSeconds","remainingMs","on","resets","inputs"}: the time-out in force and what
  // is left of it, null while it is on or never comes on; how often an application and a key began
  // its wait afresh.
  kScreenSaver,
  // A list of faults, by function.
  kFaults,
};
// The names of their events, and of their members in the state but for "focus", which is "focused"
// there.
inline constexpr std::array<base::EnumName<Part>, 11> kParts{{{Part::kProfile, "profile"},
                                                              {Part::kPanel, "panel"},
                                                              {Part::kFeatures, "features"},
                                                              {Part::kApplications, "applications"},
                                                              {Part::kFocus, "focus"},
                                                              {Part::kWindows, "windows"},
                                                              {Part::kInputMethod, "inputMethod"},
                                                              {Part::kKeyGrabs, "keyGrabs"},
                                                              {Part::kSettings, "settings"},
                                                              {Part::kScreenSaver, "screenSaver"},
                                                              {Part::kFaults, "faults"}}};
constexpr auto& EnumNames(Part) { return kParts; }

// An application's window as the state and the snapshot have it. Both positions are null while the
// window is where the set put it.
struct WindowRow {
  std::string app;
  tvset::Window window;
};
template <class Map>
void MapFields(Map& map, WindowRow& row) {
  map("app", row.app);
  map("stackMode", row.window.stack_mode);
  map("hints", row.window.hints);
  map("quarterPosition", row.window.quarter_position);
  map("position", row.window.position);
  map("focusWanted", row.window.focus_wanted);
}

// The part kWindows.
struct WindowsState {
  // Ids of the applications whose windows are shown, the topmost first.
  std::vector<std::string> stack;
  // The window of every running application, the one raised last first.
  std::vector<WindowRow> list;
};
template <class Map>
void MapFields(Map& map, WindowsState& windows) {
  map("stack", windows.stack);
  map("list", windows.list);
}

// A setting as the state and `orvane get --json` have it: {"key","type","value"}. The type is one
// of kSettingTypes, or "unknown"; the value is of the type, whole numbers without a point, or a
// text where JSON has no such number, such as an infinity.
Json RowOf(const tvset::Setting& setting);

// Names for the platform's numbers, the same in the state, in parameters and on the command line:
// VCONF_TYPE_… and app_state_e.
extern const std::array<base::EnumName<int>, 4> kSettingTypes;
extern const std::array<base::EnumName<int>, 5> kAppStates;
// "unknown" for a type without a name, which another process may have written.
std::string_view SettingTypeName(int type);

// The set's state as JSON, as people and the simulator see it: the answer of state.get, the data of
// the events that tell a change, and most of a snapshot. Reads alone; what changes the set is
// Control. Partner of EventSender, which asks for a part some milliseconds after it changed.
//
// Owned by Television; borrows the set, which outlives it. Any thread, and it takes the locks of
// the services it reads one after the other: a part is consistent in itself, several are as they
// come. Nothing throws but for want of memory.
class SetState {
 public:
  // `main_app` is the application whose pages the process serves: "uuid" is the one that the
  // library keeps for it.
  SetState(tvset::Set& set, std::string main_app);

  // A part as it is now.
  Json ValueOf(Part part) const;
  // Of a part that is a list whose rows have a key, the row of the key as it is now: the fault of a
  // function, the setting of a key, the application of an id. Null: there is none (any more).
  Json RowOf(Part part, const std::string& key) const;
  // Every part by its name, and what is told once: "keys" of the remote control, "functions" and
  // "accesses" that can be made to fail, "uuid" (null until a page has asked for one) and "time_ns"
  // of the answer, on the axis of CLOCK_REALTIME.
  Json All() const;

 private:
  // One function per part that is more than a service's own list.
  Json Row(const tvset::Application& application) const;
  Json Applications() const;
  Json Windows() const;
  Json Profile() const;
  Json Panel() const;
  Json Keys() const;
  Json Settings() const;
  Json ScreenSaver() const;
  Json Uuid() const;

  tvset::Set& set_;
  const std::string main_app_;
};

}  // namespace orvane::television
