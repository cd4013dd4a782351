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

int TypeNamed(const std::string& given) {
  for (const auto& [type, name] : kSettingTypes) {
    if (name == given) return type;
  }
  throw RequestError("There is no setting type \"" + given +
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

void Control::ApplicationsSetState(const std::string& id, const Json& state) {
  set().applications().SetState(id, ReadAppState(state));
}

void Control::ApplicationsFocus(const std::string& id) {
  if (id.empty()) {
    set().applications().ClearFocus();
  } else {
    set().applications().SetFocus(id);
  }
}

Json Control::ApplicationsInstall(const std::optional<std::string>& wgt,
                                  const std::optional<std::string>& folder) {
  if (!wgt && !folder) {
    base::fields::Refuse("\"folder\" of the parameters of applications.install", "a string",
                         nullptr);
  }
  const tvset::Application application =
      ToInstall(app::Load(wgt ? *wgt : *folder, set().paths().state_folder() / "unpacked"));
  set().applications().Install(application);
  return base::ToJson(application);
}

void Control::ApplicationsLaunch(const std::string& id) {
  set().applications().Launch(id, id == television_.app_id() ? television_.app_pid() : 0);
}

void Control::ApplicationsTerminate(const std::string& id) { set().applications().Terminate(id); }

void Control::SettingsSet(const std::string& key, const std::optional<std::string>& type,
                          const Json& value) {
  RequireKey(key);
  const std::string text = ValueText(value);
  const int number = type ? TypeNamed(*type) : DefaultType(value);
  if (set().settings().Set(key, number, text)) return;
  throw RequestError("The setting " + key + " did not take \"" + text + "\" as " +
                     std::string(SettingTypeName(number)) +
                     ": the value is none of that type, or the folder cannot be written.");
}

void Control::SettingsUnset(const std::string& key) {
  RequireKey(key);
  if (set().settings().Remove(key)) return;
  throw RequestError("There is no setting " + key + " that could be removed.");
}

void Control::FactoryReset() {
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
}

}  // namespace orvane::television
