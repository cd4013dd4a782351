// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/set_state.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <utility>

#include <app_context.h>
#include <vconf.h>

namespace orvane::television {

namespace fs = std::filesystem;

const std::array<base::EnumName<int>, 4> kSettingTypes{{{VCONF_TYPE_STRING, "string"},
                                                        {VCONF_TYPE_INT, "int"},
                                                        {VCONF_TYPE_DOUBLE, "double"},
                                                        {VCONF_TYPE_BOOL, "bool"}}};
const std::array<base::EnumName<int>, 5> kAppStates{{{APP_STATE_UNDEFINED, "UNDEFINED"},
                                                     {APP_STATE_FOREGROUND, "FOREGROUND"},
                                                     {APP_STATE_BACKGROUND, "BACKGROUND"},
                                                     {APP_STATE_SERVICE, "SERVICE"},
                                                     {APP_STATE_TERMINATED, "TERMINATED"}}};

namespace {

struct KeyRow {
  tvset::RemoteKey key;
  bool mandatory = false;
};
template <class Map>
void MapFields(Map& map, KeyRow& row) {
  map("name", row.key.name);
  map("keyCode", row.key.key_code);
  map("hardwareCode", row.key.x_key_code);
  map("mandatory", row.mandatory);
  map("pageNames", row.key.page_names);
}

struct ScreenSaverRow {
  tvset::ScreenSaverState state;
  int64_t timeout_seconds = 0;
  std::optional<int64_t> remaining_ms;  // empty: it is on, or never comes on
};
template <class Map>
void MapFields(Map& map, ScreenSaverRow& row) {
  map("owner", row.state.app_id);
  map("timeoutSeconds", row.timeout_seconds);
  map("remainingMs", row.remaining_ms);
  map("on", row.state.on);
  map("resets", row.state.resets);
  map("inputs", row.state.inputs);
}

template <size_t kCount>
std::string_view NameIn(const std::array<base::EnumName<int>, kCount>& names, int number,
                        std::string_view otherwise) {
  const auto found = std::find_if(names.begin(), names.end(),
                                  [&](const auto& entry) { return entry.value == number; });
  return found == names.end() ? otherwise : found->name;
}

// The profiles that ship with the set.
std::vector<std::string> ProfileNames() {
  std::vector<std::string> names;
  std::error_code error;
  const fs::path folder = tvset::Paths::FindProfile("uhd").parent_path();
  for (fs::directory_iterator file(folder, error), end; !error && file != end;
       file.increment(error)) {
    if (file->path().extension() == ".xml") names.push_back(file->path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// A whole number is written as one, as scripts do.
Json NumberJson(const std::string& text) {
  constexpr double kExact = 9007199254740992;  // from here on a double passes some over
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  if (*end != '\0' || !std::isfinite(number)) return text;  // JSON has no infinities
  if (std::trunc(number) == number && std::abs(number) <= kExact) {
    return static_cast<int64_t>(number);
  }
  return number;
}

}  // namespace

std::string_view SettingTypeName(int type) { return NameIn(kSettingTypes, type, "unknown"); }
std::string_view AppStateName(int state) { return NameIn(kAppStates, state, "UNDEFINED"); }

SettingRow RowOf(const tvset::Setting& setting) {
  SettingRow row{setting.key, std::string(SettingTypeName(setting.type)), setting.value};
  if (setting.type == VCONF_TYPE_BOOL) row.value = setting.value == "true";
  if (setting.type == VCONF_TYPE_INT || setting.type == VCONF_TYPE_DOUBLE) {
    row.value = NumberJson(setting.value);
  }
  return row;
}

SetState::SetState(tvset::Set& set, std::string main_app)
    : set_(set), main_app_(std::move(main_app)) {}

Json SetState::ValueOf(Part part) const {
  switch (part) {
    case Part::kProfile:
      return Profile();
    case Part::kPanel:
      return Panel();
    case Part::kFeatures:
      return base::ToJson(set_.features().list());
    case Part::kApplications:
      return base::ToJson(Applications());
    case Part::kFocus:
      return set_.applications().focused();
    case Part::kWindows:
      return base::ToJson(Windows());
    case Part::kInputMethod:
      return base::ToJson(set_.input_method().state());
    case Part::kKeyGrabs:
      return base::ToJson(set_.key_grabs().list());
    case Part::kSettings:
      return Settings();
    case Part::kScreenSaver:
      return ScreenSaver();
    case Part::kFaults:
      return base::ToJson(set_.faults().list());
  }
  return {};
}

Json SetState::RowOf(Part part, const std::string& key) const {
  if (part == Part::kSettings) {
    const auto setting = set_.settings().Find(key);
    return setting ? base::ToJson(television::RowOf(*setting)) : Json();
  }
  if (part == Part::kApplications) {
    const auto application = set_.applications().Find(key);
    return application ? base::ToJson(Row(*application)) : Json();
  }
  if (part != Part::kFaults) return {};
  for (const tvset::Fault& fault : set_.faults().list()) {
    if (fault.function == key) return base::ToJson(fault);
  }
  return {};
}

Json SetState::All() const {
  Json all;
  for (const auto& [part, name] : kParts) {
    all[part == Part::kFocus ? "focused" : std::string(name)] = ValueOf(part);
  }
  all["keys"] = Keys();
  all["functions"] = tvset::FaultTable::functions();
  all["accesses"] = tvset::FaultTable::accesses();
  all["uuid"] = Uuid();
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  all["time_ns"] = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
  return all;
}

Json SetState::Profile() const {
  const fs::path file = set_.profile();
  return {{"name", file.stem().string()}, {"file", file.string()}, {"profiles", ProfileNames()}};
}

// A UHD panel's windows are placed in its own pixels.
Json SetState::Panel() const {
  const bool uhd = set_.features().Find("com.korvale/featureconf/ud_panel_supported", "bool",
                                        tvset::FeatureGroup::kCustom) == "true";
  return {{"width", uhd ? 3840 : 1920}, {"height", uhd ? 2160 : 1080}};
}

std::vector<ApplicationRow> SetState::Applications() const {
  std::vector<ApplicationRow> rows;
  for (const tvset::Application& application : set_.applications().list()) {
    rows.push_back(Row(application));
  }
  return rows;
}

ApplicationRow SetState::Row(const tvset::Application& application) const {
  ApplicationRow row;
  row.installed = application;
  const auto running = set_.applications().Running(application.id);
  if (!running) return row;
  row.running = true;
  row.state = running->state;
  row.state_name = AppStateName(running->state);
  if (running->pid != 0) row.pid = running->pid;
  return row;
}

WindowsState SetState::Windows() const {
  WindowsState windows;
  windows.stack = set_.windows().stack();
  for (const std::string& app : set_.applications().raise_order()) {
    windows.list.push_back({app, set_.windows().window(app)});
  }
  return windows;
}

Json SetState::Keys() const {
  std::vector<KeyRow> keys;
  for (const tvset::RemoteKey& key : set_.key_grabs().known_keys()) {
    keys.push_back({key, tvset::IsMandatoryKey(key.name)});
  }
  return base::ToJson(keys);
}

Json SetState::Settings() const {
  Json rows = Json::array();
  for (const tvset::Setting& setting : set_.settings().list()) {
    rows.push_back(base::ToJson(television::RowOf(setting)));
  }
  return rows;
}

Json SetState::ScreenSaver() const {
  using std::chrono::milliseconds;
  ScreenSaverRow row;
  row.state = set_.screen_saver().state();
  row.timeout_seconds = row.state.timeout.count();
  if (!row.state.on && row.state.timeout.count() != 0) {
    const auto left = std::max(row.state.timeout - row.state.idle, std::chrono::nanoseconds(0));
    row.remaining_ms = std::chrono::duration_cast<milliseconds>(left).count();
  }
  return base::ToJson(row);
}

// As the library keeps it for the application; it makes one when the page first asks.
Json SetState::Uuid() const {
  const auto application = set_.applications().Find(main_app_);
  if (!application) return {};
  std::ifstream file(set_.paths().app_data(application->package) / "uuid");
  std::string uuid;
  return std::getline(file, uuid) && !uuid.empty() ? Json(uuid) : Json();
}

}  // namespace orvane::television
