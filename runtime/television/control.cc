// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/control.h"

#include <string_view>
#include <vector>

#include "base/near_names.h"
#include "television/request_error.h"
#include "television/shown_text.h"

namespace orvane::television {

namespace {

using Receiver = Control::Receiver;

// How a method is called with what was given: its own parameters are read from the JSON, and one
// with a slip in its name is refused, which would otherwise be as good as none.
template <class Parameters>
Parameters Read(const Json& given, std::string_view method) {
  static const auto* const kNone = new Json(Json::object());
  return base::FromJson<Parameters>(given.is_null() ? *kNone : given,
                                    "the parameters of " + std::string(method),
                                    base::Unknown::kRefuse);
}

template <class Parameters>
void CallHandler(Control& control, Json (Control::*handler)(const Parameters&),
                 std::string_view method, const Json& given, const Receiver& receiver) {
  receiver((control.*handler)(Read<Parameters>(given, method)), "");
}

template <class Parameters>
void CallHandler(Control& control, void (Control::*handler)(const Parameters&, const Receiver&),
                 std::string_view method, const Json& given, const Receiver& receiver) {
  (control.*handler)(Read<Parameters>(given, method), receiver);
}

template <auto kHandler>
void CallMethod(Control& control, std::string_view method, const Json& given,
                const Receiver& receiver) {
  CallHandler(control, kHandler, method, given, receiver);
}

}  // namespace

struct Control::Row {
  std::string_view method;
  void (*call)(Control& control, std::string_view method, const Json& given,
               const Receiver& receiver);
};

const Control::Row Control::kRows[] = {
    {"state.get", &CallMethod<&Control::StateGet>},
    {"profile.use", &CallMethod<&Control::ProfileUse>},
    {"features.set", &CallMethod<&Control::FeaturesSet>},
    {"features.remove", &CallMethod<&Control::FeaturesRemove>},
    {"applications.setState", &CallMethod<&Control::ApplicationsSetState>},
    {"applications.focus", &CallMethod<&Control::ApplicationsFocus>},
    {"applications.install", &CallMethod<&Control::ApplicationsInstall>},
    {"applications.launch", &CallMethod<&Control::ApplicationsLaunch>},
    {"applications.terminate", &CallMethod<&Control::ApplicationsTerminate>},
    {"keys.press", &CallMethod<&Control::KeysPress>},
    {"inputMethod.setDynamic", &CallMethod<&Control::InputMethodSetDynamic>},
    {"settings.list", &CallMethod<&Control::SettingsList>},
    {"settings.set", &CallMethod<&Control::SettingsSet>},
    {"settings.get", &CallMethod<&Control::SettingsGet>},
    {"settings.unset", &CallMethod<&Control::SettingsUnset>},
    {"screenSaver.activity", &CallMethod<&Control::ScreenSaverActivity>},
    {"clock.advance", &CallMethod<&Control::ClockAdvance>},
    {"faults.set", &CallMethod<&Control::FaultsSet>},
    {"faults.clear", &CallMethod<&Control::FaultsClear>},
    {"functions.list", &CallMethod<&Control::FunctionsList>},
    {"factoryReset", &CallMethod<&Control::FactoryReset>},
    {"markers.list", &CallMethod<&Control::MarkersList>},
    {"log.tail", &CallMethod<&Control::LogTail>},
    {"log.write", &CallMethod<&Control::LogWrite>},
    {"stat.read", &CallMethod<&Control::StatRead>},
    {"debug.crash", &CallMethod<&Control::DebugCrash>},
};

Control::Control(Television& television) : television_(television), resources_(television.host()) {}

void Control::Call(const std::string& method, const Json& parameters, const Receiver& receiver) {
  std::vector<std::string> names;
  for (const Row& row : kRows) {
    if (row.method == method) return row.call(*this, method, parameters, receiver);
    names.emplace_back(row.method);
  }
  throw RequestError("There is no method " + Quoted(method) + "." +
                     base::DidYouMean(base::NearNames(method, names)));
}

Json Control::StateGet(const NoParameters&) { return television_.state().All(); }

void Control::StatRead(const ResourceParameters& parameters, const Receiver& receiver) {
  resources_.Read(parameters.resource, receiver);
}

}  // namespace orvane::television
