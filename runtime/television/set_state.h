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

// What of the set is told as one when it changes.
enum class Part {
  kProfile,
  kPanel,
  kFeatures,
  kApplications,
  kFocus,
  kWindows,
  kInputMethod,
  kKeyGrabs,
  kSettings,
  kScreenSaver,
  kFaults,
};
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

struct WindowsState {
  std::vector<std::string> stack;  // those that are shown, the topmost first
  std::vector<WindowRow> list;     // of every running application, the one raised last first
};
template <class Map>
void MapFields(Map& map, WindowsState& windows) {
  map("stack", windows.stack);
  map("list", windows.list);
}

// A setting as the state has it: key, type (one of kSettingTypes, or "unknown") and value, which is
// of the type, or a text where JSON has no such number.
Json RowOf(const tvset::Setting& setting);

// Names for the platform's numbers; those of setting types are the command line's.
extern const std::array<base::EnumName<int>, 4> kSettingTypes;  // VCONF_TYPE_…
extern const std::array<base::EnumName<int>, 5> kAppStates;     // app_state_e
std::string_view SettingTypeName(int type);                     // "unknown" for one without a name

// The set's state, as people see it: each part as the struct that is its JSON, the events of the
// set process, the answer of state.get and the snapshot's. Borrows the set, which outlives it. Any
// thread; a part is consistent in itself, several are as they come.
class SetState {
 public:
  // `main_app` is the application whose pages the process serves.
  SetState(tvset::Set& set, std::string main_app);

  // A part as it is now.
  Json ValueOf(Part part) const;
  // Of a part that is a list whose rows have a key, the row of the key as it is now: the fault of a
  // function, the setting of a key, the application of an id. Null: there is none (any more).
  Json RowOf(Part part, const std::string& key) const;
  // Every part, and what never changes.
  Json All() const;

 private:
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
