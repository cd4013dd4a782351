// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about applications, settings and what outlives a run.
#include <unistd.h>

#include <system_error>

#include <vconf.h>

#include "app/web_application.h"
#include "television/control.h"

namespace orvane::television {

namespace fs = std::filesystem;
using picojson::value;

namespace {

void RequireKey(const std::string& key) {
  if (tvset::Settings::IsKey(key)) return;
  throw RequestError("\"" + key +
                     "\" is no key of a setting: a key begins with db/, file/ or memory/, as in "
                     "memory/runningApps/performance_data.");
}

// The text that the set's own parser of values takes.
std::string ValueText(const Fields& parameters) {
  const value* const given = parameters.Find("value");
  if (given == nullptr || given->is<picojson::object>() || given->is<picojson::array>()) {
    parameters.Refuse("value", "a string, a number or a boolean");
  }
  return given->to_str();
}

int DefaultType(const value& given) {
  if (given.is<bool>()) return VCONF_TYPE_BOOL;
  if (!given.is<double>()) return VCONF_TYPE_STRING;
  const auto number = given.get<double>();
  const bool whole = number >= -2147483648.0 && number <= 2147483647.0 &&
                     number == static_cast<double>(static_cast<int>(number));
  return whole ? VCONF_TYPE_INT : VCONF_TYPE_DOUBLE;
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

value Control::ApplicationsSetState(const Fields& parameters) {
  const value* const state = parameters.Find("state");
  const bool by_name = state != nullptr && state->is<std::string>();
  const int number = by_name ? ParseAppState(parameters.Text("state"))
                             : static_cast<int>(parameters.Integer("state", 0, 7));
  set().applications().SetState(parameters.Text("id"), number);
  return {};
}

value Control::ApplicationsFocus(const Fields& parameters) {
  const std::string& id = parameters.Text("id");
  if (id.empty()) {
    set().applications().ClearFocus();
  } else {
    set().applications().SetFocus(id);
  }
  return {};
}

value Control::ApplicationsInstall(const Fields& parameters) {
  const std::string& path =
      parameters.Has("wgt") ? parameters.Text("wgt") : parameters.Text("folder");
  const app::WebApplication loaded = app::Load(path, set().paths().state_folder() / "unpacked");
  const InstalledApplication installed{
      {loaded.id, loaded.package, loaded.name, loaded.folder, loaded.metadata, loaded.privileges},
      loaded.version};
  television_.applications().Install(installed);
  return value(ToJson(installed));
}

value Control::ApplicationsLaunch(const Fields& parameters) {
  const std::string& id = parameters.Text("id");
  const StartOptions& options = television_.options();
  const bool is_main = id == options.app.application.id;
  const pid_t own = options.pid != 0 ? options.pid : getpid();
  set().applications().Launch(id, is_main ? own : 0);
  return {};
}

value Control::ApplicationsTerminate(const Fields& parameters) {
  set().applications().Terminate(parameters.Text("id"));
  return {};
}

value Control::SettingsList(const Fields&) { return television_.state().ValueOf(Part::kSettings); }

value Control::SettingsSet(const Fields& parameters) {
  const std::string& key = parameters.Text("key");
  RequireKey(key);
  const std::string text = ValueText(parameters);
  const int type = parameters.Has("type") ? ParseSettingType(parameters.Text("type"))
                                          : DefaultType(*parameters.Find("value"));
  if (set().settings().Set(key, type, text)) return {};
  throw RequestError("The setting " + key + " did not take \"" + text + "\" as " +
                     std::string(SettingTypeName(type)) +
                     ": the value is none of that type, or the folder cannot be written.");
}

value Control::SettingsGet(const Fields& parameters) {
  const std::string& key = parameters.Text("key");
  RequireKey(key);
  const auto setting = set().settings().Find(key);
  if (!setting) {
    throw RequestError("There is no setting " + key + ". Write it first, or see settings.list.");
  }
  return SetState::SettingJson(*setting);
}

value Control::SettingsUnset(const Fields& parameters) {
  const std::string& key = parameters.Text("key");
  RequireKey(key);
  if (set().settings().Remove(key)) return {};
  throw RequestError("There is no setting " + key + " that could be removed.");
}

// As a set comes out of its box, with the applications still on it. Pages keep what they hold.
value Control::FactoryReset(const Fields&) {
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
  television_.events().TouchAll();
  return {};
}

}  // namespace orvane::television
