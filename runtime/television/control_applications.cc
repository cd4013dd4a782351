// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about applications, settings and what outlives a run.
#include <filesystem>
#include <system_error>

#include <vconf.h>

#include "app/web_application.h"
#include "television/control.h"
#include "television/request_error.h"

namespace orvane::television {

namespace fs = std::filesystem;

namespace {

void RequireKey(const std::string& key) {
  if (tvset::Settings::IsKey(key)) return;
  throw RequestError("\"" + key +
                     "\" is no key of a setting: a key begins with db/, file/ or memory/, as in "
                     "memory/runningApps/performance_data.");
}

// The text that the set's own parser of values takes.
std::string ValueText(const Json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_boolean() || value.is_number()) return base::JsonText(value);
  base::fields::Refuse("\"value\" of the parameters of settings.set",
                       "a string, a number or a boolean", &value);
}

int DefaultType(const Json& value) {
  if (value.is_boolean()) return VCONF_TYPE_BOOL;
  if (!value.is_number()) return VCONF_TYPE_STRING;
  int number = 0;
  return base::fields::ReadInteger(value, &number) ? VCONF_TYPE_INT : VCONF_TYPE_DOUBLE;
}

int TypeOf(const SettingParameters& parameters) {
  if (!parameters.type) return DefaultType(parameters.value);
  for (const auto& [type, name] : kSettingTypes) {
    if (name == *parameters.type) return type;
  }
  throw RequestError("There is no setting type \"" + *parameters.type +
                     "\". There are string, int, double and bool.");
}

int ReadAppState(const Json& state) {
  int number = 0;
  if (base::fields::ReadInteger(state, &number) && number >= 0 && number <= 7) return number;
  std::string names;
  for (const auto& [known, name] : kAppStates) {
    if (state.is_string() && state.get_ref<const std::string&>() == name) return known;
    names.append(names.empty() ? "" : ", ").append(name);
  }
  base::fields::Refuse("\"state\" of the parameters of applications.setState",
                       "one of " + names + ", or a whole number from 0 to 7", &state);
}

// Empties the folder; what cannot be removed is named.
void RemoveContent(const fs::path& folder) {
  std::error_code error;
  fs::remove_all(folder, error);
  if (!error) return;
  throw RequestError(folder.string() + " cannot be removed: " + error.message() +
                     ". Mend its permissions and reset again.");
}

}  // namespace

Json Control::ApplicationsSetState(const ApplicationStateParameters& parameters) {
  set().applications().SetState(parameters.id, ReadAppState(parameters.state));
  return {};
}

Json Control::ApplicationsFocus(const ApplicationParameters& parameters) {
  if (parameters.id.empty()) {
    set().applications().ClearFocus();
  } else {
    set().applications().SetFocus(parameters.id);
  }
  return {};
}

Json Control::ApplicationsInstall(const InstallParameters& parameters) {
  if (!parameters.wgt && !parameters.folder) {
    base::fields::Refuse("\"folder\" of the parameters of applications.install", "a string",
                         nullptr);
  }
  const std::string& path = parameters.wgt ? *parameters.wgt : *parameters.folder;
  const InstalledApplication installed =
      ToInstall(app::Load(path, set().paths().state_folder() / "unpacked"));
  television_.applications().Install(installed);
  return base::ToJson(installed);
}

Json Control::ApplicationsLaunch(const ApplicationParameters& parameters) {
  const bool is_main = parameters.id == television_.app_id();
  set().applications().Launch(parameters.id, is_main ? television_.app_pid() : 0);
  return {};
}

Json Control::ApplicationsTerminate(const ApplicationParameters& parameters) {
  set().applications().Terminate(parameters.id);
  return {};
}

Json Control::SettingsList(const NoParameters&) {
  return television_.state().ValueOf(Part::kSettings);
}

Json Control::SettingsSet(const SettingParameters& parameters) {
  RequireKey(parameters.key);
  const std::string text = ValueText(parameters.value);
  const int type = TypeOf(parameters);
  if (set().settings().Set(parameters.key, type, text)) return {};
  throw RequestError("The setting " + parameters.key + " did not take \"" + text + "\" as " +
                     std::string(SettingTypeName(type)) +
                     ": the value is none of that type, or the folder cannot be written.");
}

Json Control::SettingsGet(const KeyedParameters& parameters) {
  RequireKey(parameters.key);
  Json row = television_.state().RowOf(Part::kSettings, parameters.key);
  if (!row.is_null()) return row;
  throw RequestError("There is no setting " + parameters.key +
                     ". Write it first, or see settings.list.");
}

Json Control::SettingsUnset(const KeyedParameters& parameters) {
  RequireKey(parameters.key);
  if (set().settings().Remove(parameters.key)) return {};
  throw RequestError("There is no setting " + parameters.key + " that could be removed.");
}

// As a set comes out of its box, with the applications still on it. Pages keep what they hold.
Json Control::FactoryReset(const NoParameters&) {
  for (const tvset::Setting& setting : set().settings().list()) {
    set().settings().Remove(setting.key);
  }
  for (const tvset::Application& application : set().applications().list()) {
    RemoveContent(set().paths().app_root() / application.package);
    // Makes the empty folders again.
    set().applications().Install(application);
    set().key_grabs().Release(application.id);
  }
  set().faults().ClearAll();
  set().input_method().Reset();
  set().screen_saver().SetAppId("DEFAULT");
  set().screen_saver().SetTimeout(0);
  set().UseProfile(set().profile());
  set().screen_saver().ResetTimeout();
  for (const auto& entry : kParts) television_.listener().OnTouched(entry.value);
  return {};
}

}  // namespace orvane::television
