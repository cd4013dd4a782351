// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/control.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#include "base/near_names.h"
#include "television/message_text.h"
#include "television/resource_reader.h"

namespace orvane::television {

struct Control::Row {
  std::string_view method;
  Handler handle;
  const char* parameters;  // their names, with a blank between
};

const Control::Row Control::kRows[] = {
    {"state.get", &Control::StateGet, ""},
    {"profile.use", &Control::ProfileUse, "profile"},
    {"features.set", &Control::FeaturesSet, "key type text group"},
    {"features.remove", &Control::FeaturesRemove, "key"},
    {"applications.setState", &Control::ApplicationsSetState, "id state"},
    {"applications.focus", &Control::ApplicationsFocus, "id"},
    {"applications.install", &Control::ApplicationsInstall, "folder wgt"},
    {"applications.launch", &Control::ApplicationsLaunch, "id"},
    {"applications.terminate", &Control::ApplicationsTerminate, "id"},
    {"keys.press", &Control::KeysPress, "name long native"},
    {"inputMethod.setDynamic", &Control::InputMethodSetDynamic, "dynamic"},
    {"settings.list", &Control::SettingsList, ""},
    {"settings.set", &Control::SettingsSet, "key type value"},
    {"settings.get", &Control::SettingsGet, "key"},
    {"settings.unset", &Control::SettingsUnset, "key"},
    {"screenSaver.activity", &Control::ScreenSaverActivity, ""},
    {"clock.advance", &Control::ClockAdvance, "ms"},
    {"faults.set", &Control::FaultsSet, "function code mode"},
    {"faults.clear", &Control::FaultsClear, "function"},
    {"functions.list", &Control::FunctionsList, ""},
    {"factoryReset", &Control::FactoryReset, ""},
    {"markers.list", &Control::MarkersList, ""},
    {"log.tail", &Control::LogTail, "count level tag"},
    {"log.write", &Control::LogWrite, "priority tag text count"},
    {"debug.crash", &Control::DebugCrash, "signal"},
};

namespace {

constexpr char kStatRead[] = "stat.read";  // answers later, so it is in no row

std::vector<std::string> Words(const char* text) {
  std::istringstream words(text);
  return {std::istream_iterator<std::string>(words), {}};
}

std::string Listed(const std::vector<std::string>& names) {
  std::string text;
  for (size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
    text += "\"" + names[i] + "\"";
  }
  return names.empty() ? "none" : text;
}

// A parameter with a slip in its name would otherwise be as good as none.
void RefuseUnknown(const std::string& method, const Fields& parameters, const char* known_names) {
  const std::vector<std::string> known = Words(known_names);
  for (const auto& [name, value] : parameters.object()) {
    if (std::find(known.begin(), known.end(), name) != known.end()) continue;
    throw RequestError(method + " has no parameter " + television::Quoted(name) + "; it has " +
                       Listed(known) + "." + base::DidYouMean(base::NearNames(name, known)));
  }
}

}  // namespace

Control::Control(Television& television, Outbox& outbox)
    : television_(television),
      resources_(std::make_unique<ResourceReader>(television.host(), outbox)) {}

Control::~Control() = default;

std::optional<picojson::value> Control::Call(int64_t id, const std::string& method,
                                             const Fields& parameters) {
  for (const Row& row : kRows) {
    if (row.method != method) continue;
    RefuseUnknown(method, parameters, row.parameters);
    return (this->*row.handle)(parameters);
  }
  if (method == kStatRead) {
    RefuseUnknown(method, parameters, "resource");
    resources_->Read(id, parameters.Text("resource"));
    return std::nullopt;
  }
  std::vector<std::string> names = {kStatRead};
  for (const Row& row : kRows) names.emplace_back(row.method);
  throw RequestError("There is no method " + television::Quoted(method) + "." +
                     base::DidYouMean(base::NearNames(method, names)));
}

picojson::value Control::StateGet(const Fields&) { return television_.state().All(); }

}  // namespace orvane::television
