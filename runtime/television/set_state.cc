// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/set_state.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <utility>

#include <app_context.h>
#include <vconf.h>

#include "base/wall_clock.h"

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

// A whole number is written as one, as scripts do. What JSON has no number for stays a text.
Json NumberJson(const std::string& text) {
  const Json number = Json::parse(text, nullptr, /*allow_exceptions=*/false);
  int64_t whole = 0;
  if (base::fields::ReadInteger(number, &whole)) return whole;
  return number.is_number() ? number : Json(text);
}

}  // namespace

std::string_view SettingTypeName(int type) { return NameIn(kSettingTypes, type, "unknown"); }

Json RowOf(const tvset::Setting& setting) {
  Json row{{"key", setting.key}, {"type", SettingTypeName(setting.type)}, {"value", setting.value}};
  if (setting.type == VCONF_TYPE_BOOL) row["value"] = setting.value == "true";
  if (setting.type == VCONF_TYPE_INT || setting.type == VCONF_TYPE_DOUBLE) {
    row["value"] = NumberJson(setting.value);
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
      return Applications();
    case Part::kFocus:
      return set_.applications().focused();
    case Part::kWindows:
      return Windows();
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
    return setting ? television::RowOf(*setting) : Json();
  }
  if (part == Part::kApplications) {
    const auto application = set_.applications().Find(key);
    return application ? Row(*application) : Json();
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
  all["time_ns"] = base::NowNs();
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

Json SetState::Applications() const {
  Json rows = Json::array();
  for (const tvset::Application& application : set_.applications().list()) {
    rows.push_back(Row(application));
  }
  return rows;
}

// As it was installed, and whether and how it runs. One may run without a process of its own.
Json SetState::Row(const tvset::Application& application) const {
  Json row = base::ToJson(application);
  const auto running = set_.applications().Running(application.id);
  row["running"] = running.has_value();
  row["state"] = running ? Json(running->state) : Json();
  row["stateName"] = running ? Json(NameIn(kAppStates, running->state, "UNDEFINED")) : Json();
  row["pid"] = running && running->pid != 0 ? Json(running->pid) : Json();
  return row;
}

Json SetState::Windows() const {
  WindowsState windows;
  windows.stack = set_.windows().stack();
  for (const std::string& app : set_.applications().raise_order()) {
    windows.list.push_back({app, set_.windows().window(app)});
  }
  return base::ToJson(windows);
}

Json SetState::Keys() const {
  Json keys = Json::array();
  for (const tvset::RemoteKey& key : set_.key_grabs().known_keys()) {
    keys.push_back({{"name", key.name},
                    {"keyCode", key.key_code},
                    {"hardwareCode", key.x_key_code},
                    {"mandatory", tvset::IsMandatoryKey(key.name)},
                    {"pageNames", key.page_names}});
  }
  return keys;
}

Json SetState::Settings() const {
  Json rows = Json::array();
  for (const tvset::Setting& setting : set_.settings().list()) {
    rows.push_back(television::RowOf(setting));
  }
  return rows;
}

// Nothing remains where it is on, or never comes on.
Json SetState::ScreenSaver() const {
  const tvset::ScreenSaverState state = set_.screen_saver().state();
  Json remaining_ms;
  if (!state.on && state.timeout.count() != 0) {
    const auto left = std::max(state.timeout - state.idle, std::chrono::nanoseconds(0));
    remaining_ms = std::chrono::duration_cast<std::chrono::milliseconds>(left).count();
  }
  return {{"owner", state.app_id},  {"timeoutSeconds", state.timeout.count()},
          {"on", state.on},         {"remainingMs", remaining_ms},
          {"resets", state.resets}, {"inputs", state.inputs}};
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
