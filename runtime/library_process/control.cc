// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "library_process/control.h"

#include <string_view>
#include <vector>

#include "app/near_names.h"
#include "library_process/resource_reader.h"

namespace orvane::library_process {

struct Control::Row {
  std::string_view method;
  Handler handle;
};

const Control::Row Control::kRows[] = {
    {"state.get", &Control::StateGet},
    {"profile.use", &Control::ProfileUse},
    {"features.set", &Control::FeaturesSet},
    {"features.remove", &Control::FeaturesRemove},
    {"applications.setState", &Control::ApplicationsSetState},
    {"applications.focus", &Control::ApplicationsFocus},
    {"applications.install", &Control::ApplicationsInstall},
    {"applications.launch", &Control::ApplicationsLaunch},
    {"applications.terminate", &Control::ApplicationsTerminate},
    {"keys.press", &Control::KeysPress},
    {"inputMethod.setDynamic", &Control::InputMethodSetDynamic},
    {"settings.list", &Control::SettingsList},
    {"settings.set", &Control::SettingsSet},
    {"settings.get", &Control::SettingsGet},
    {"settings.unset", &Control::SettingsUnset},
    {"screenSaver.activity", &Control::ScreenSaverActivity},
    {"clock.advance", &Control::ClockAdvance},
    {"faults.set", &Control::FaultsSet},
    {"faults.clear", &Control::FaultsClear},
    {"functions.list", &Control::FunctionsList},
    {"factoryReset", &Control::FactoryReset},
    {"markers.list", &Control::MarkersList},
    {"log.tail", &Control::LogTail},
    {"log.write", &Control::LogWrite},
    {"debug.crash", &Control::DebugCrash},
};

namespace {

constexpr char kStatRead[] = "stat.read";  // answers later, so it is in no row

}  // namespace

Control::Control(Television& television, Outbox& outbox)
    : television_(television),
      resources_(std::make_unique<ResourceReader>(television.host(), outbox)) {}

Control::~Control() = default;

std::optional<picojson::value> Control::Call(int64_t id, const std::string& method,
                                             const Fields& parameters) {
  for (const Row& row : kRows) {
    if (row.method == method) return (this->*row.handle)(parameters);
  }
  if (method == kStatRead) {
    resources_->Read(id, parameters.Text("resource"));
    return std::nullopt;
  }
  std::vector<std::string> names = {kStatRead};
  for (const Row& row : kRows) names.emplace_back(row.method);
  throw RequestError("There is no method \"" + method + "\"." +
                     app::DidYouMean(app::NearNames(method, names)));
}

picojson::value Control::StateGet(const Fields&) { return television_.state().All(); }

}  // namespace orvane::library_process
