// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/set_state.h"

#include <time.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <utility>
#include <vector>

#include <vconf.h>

namespace orvane::television {

namespace fs = std::filesystem;

namespace {

using picojson::array;
using picojson::object;
using picojson::value;

value Text(std::string_view text) { return value(std::string(text)); }
value Number(double number) { return value(number); }

template <typename Names>
value TextArray(const Names& names) {
  array texts;
  for (const auto& name : names) texts.emplace_back(std::string(name));
  return value(std::move(texts));
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

}  // namespace

SetState::SetState(tvset::Set& set, const InstalledApplications& applications, std::string main_app)
    : set_(set), applications_(applications), main_app_(std::move(main_app)) {}

std::string_view SetState::NameOf(Part part) {
  constexpr std::string_view kNames[] = {"profile",  "panel",       "features",    "applications",
                                         "focus",    "windows",     "inputMethod", "keyGrabs",
                                         "settings", "screenSaver", "faults"};
  static_assert(std::size(kNames) == kParts.size());
  return kNames[static_cast<size_t>(part)];
}

value SetState::ValueOf(Part part) const {
  switch (part) {
    case Part::kProfile:
      return Profile();
    case Part::kPanel:
      return Panel();
    case Part::kFeatures:
      return Features();
    case Part::kApplications:
      return Applications();
    case Part::kFocus:
      return Text(set_.applications().focused());
    case Part::kWindows:
      return Windows();
    case Part::kInputMethod:
      return InputMethod();
    case Part::kKeyGrabs:
      return KeyGrabs();
    case Part::kSettings:
      return Settings();
    case Part::kScreenSaver:
      return ScreenSaver();
    case Part::kFaults:
      return Faults();
  }
  return {};
}

value SetState::All() const {
  object all;
  for (const Part part : kParts) {
    const std::string_view name = part == Part::kFocus ? "focused" : NameOf(part);
    all[std::string(name)] = ValueOf(part);
  }
  all["keys"] = Keys();
  all["functions"] = TextArray(tvset::FaultTable::functions());
  all["accesses"] = TextArray(tvset::FaultTable::accesses());
  all["uuid"] = Uuid();
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  all["time_ns"] = Number(static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec));
  return value(std::move(all));
}

value SetState::Profile() const {
  const fs::path file = set_.profile();
  return value(object{{"name", Text(file.stem().string())},
                      {"file", Text(file.string())},
                      {"profiles", TextArray(ProfileNames())}});
}

// A UHD panel's windows are placed in its own pixels.
value SetState::Panel() const {
  const tvset::FeatureStore& features = set_.features();
  const bool uhd = features.Find("com.korvale/featureconf/ud_panel_supported", "bool",
                                 tvset::FeatureGroup::kCustom) == "true";
  return value(object{{"width", Number(uhd ? 3840 : 1920)}, {"height", Number(uhd ? 2160 : 1080)}});
}

value SetState::Features() const {
  array features;
  for (const tvset::Feature& feature : set_.features().list()) {
    features.emplace_back(object{{"key", Text(feature.key)},
                                 {"type", Text(feature.type)},
                                 {"text", Text(feature.text)},
                                 {"group", Text(GroupName(feature.group))}});
  }
  return value(std::move(features));
}

value SetState::Applications() const {
  array applications;
  for (const tvset::Application& application : set_.applications().list()) {
    object row = ToJson(applications_.WithVersion(application));
    const auto running = set_.applications().Running(application.id);
    row["running"] = value(running.has_value());
    row["state"] = running ? Number(running->state) : value();
    row["stateName"] = running ? Text(AppStateName(running->state)) : value();
    row["pid"] = running && running->pid != 0 ? Number(running->pid) : value();
    applications.emplace_back(std::move(row));
  }
  return value(std::move(applications));
}

value SetState::Windows() const {
  array list;
  for (const std::string& app : set_.applications().raise_order()) {
    const tvset::Window window = set_.windows().window(app);
    object hints;
    for (const auto& [key, text] : window.hints) hints[key] = Text(text);
    list.emplace_back(object{
        {"app", Text(app)},
        {"stackMode", Text(StackModeName(window.stack_mode))},
        {"hints", value(std::move(hints))},
        {"quarterPosition", window.quarter_position ? Number(*window.quarter_position) : value()},
        {"position", window.position ? value(array{Number(window.position->first),
                                                   Number(window.position->second)})
                                     : value()},
        {"focusWanted", value(window.focus_wanted)}});
  }
  return value(object{{"stack", TextArray(set_.windows().stack())}, {"list", value(list)}});
}

value SetState::InputMethod() const {
  const tvset::InputMethodState state = set_.input_method().state();
  return value(object{{"dynamic", value(state.dynamic_style)},
                      {"positioned", value(state.positioned)},
                      {"x", Number(state.x)},
                      {"y", Number(state.y)},
                      {"align", Number(state.align)},
                      {"recommendedEnabled", value(state.recommended_words_enabled)},
                      {"recommendedWords", TextArray(state.recommended_words)}});
}

value SetState::KeyGrabs() const {
  array grabs;
  for (const tvset::KeyGrab& grab : set_.key_grabs().list()) {
    grabs.emplace_back(object{{"app", Text(grab.app)},
                              {"key", Text(grab.key_name)},
                              {"mode", Text(GrabModeName(grab.mode))}});
  }
  return value(std::move(grabs));
}

value SetState::Keys() const {
  array keys;
  for (const tvset::RemoteKey& key : set_.key_grabs().known_keys()) {
    keys.emplace_back(object{{"name", Text(key.name)},
                             {"keyCode", Number(key.key_code)},
                             {"hardwareCode", Number(key.x_key_code)},
                             {"mandatory", value(tvset::IsMandatoryKey(key.name))},
                             {"pageNames", TextArray(key.page_names)}});
  }
  return value(std::move(keys));
}

value SetState::SettingJson(const tvset::Setting& setting) {
  value shown = Text(setting.value);
  const bool number = setting.type == VCONF_TYPE_INT || setting.type == VCONF_TYPE_DOUBLE;
  char* end = nullptr;
  const double parsed = number ? std::strtod(setting.value.c_str(), &end) : 0;
  // JSON has no infinities.
  if (number && *end == '\0' && parsed - parsed == 0) shown = Number(parsed);
  if (setting.type == VCONF_TYPE_BOOL) {
    shown = value(setting.value == "true");
  }
  return value(object{{"key", Text(setting.key)},
                      {"type", Text(SettingTypeName(setting.type))},
                      {"value", std::move(shown)}});
}

value SetState::Settings() const {
  array settings;
  for (const tvset::Setting& setting : set_.settings().list()) {
    settings.push_back(SettingJson(setting));
  }
  return value(std::move(settings));
}

value SetState::ScreenSaver() const {
  const tvset::ScreenSaverState state = set_.screen_saver().state();
  const bool waits = !state.on && state.timeout.count() != 0;
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::max(state.timeout - state.idle, std::chrono::nanoseconds(0)));
  return value(object{{"owner", Text(state.app_id)},
                      {"timeoutSeconds", Number(static_cast<double>(state.timeout.count()))},
                      {"remainingMs", waits ? Number(static_cast<double>(left.count())) : value()},
                      {"on", value(state.on)},
                      {"resets", Number(static_cast<double>(state.resets))},
                      {"inputs", Number(static_cast<double>(state.inputs))}});
}

value SetState::Faults() const {
  array faults;
  for (const tvset::Fault& fault : set_.faults().list()) {
    faults.emplace_back(object{{"function", Text(fault.function)},
                               {"code", Number(fault.code)},
                               {"mode", Text(FaultModeName(fault.mode))},
                               {"hits", Number(static_cast<double>(fault.hits))}});
  }
  return value(std::move(faults));
}

// As the library keeps it for the application; it makes one when the page first asks.
value SetState::Uuid() const {
  const auto application = set_.applications().Find(main_app_);
  if (!application) return {};
  std::ifstream file(set_.paths().app_data(application->package) / "uuid");
  std::string uuid;
  return std::getline(file, uuid) && !uuid.empty() ? Text(uuid) : value();
}

}  // namespace orvane::television
