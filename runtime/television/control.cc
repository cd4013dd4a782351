// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/control.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include <dlog.h>

#include "base/near_names.h"
#include "television/request_error.h"
#include "television/set_fields.h"
#include "television/shown_text.h"

namespace orvane::television {

namespace {

using Receiver = Control::Receiver;
// Of a method, in the order of its handler's arguments.
using ParameterNames = std::array<const char*, 4>;

// What a method is called with.
struct MethodCall {
  std::string owner;  // of the parameters, in messages
  const ParameterNames& names;
  const Json given;
};

// The arguments of a handler. A parameter with a slip in its name, which would otherwise be as good
// as none, is refused.
template <class... Arguments>
std::tuple<std::decay_t<Arguments>...> Read(const MethodCall& call) {
  if (!call.given.is_object()) {
    base::fields::Refuse(call.owner, "a JSON object, in braces", &call.given);
  }
  base::fields::RefuseOthers(call.given, call.owner,
                             {call.names.begin(), call.names.begin() + sizeof...(Arguments)});
  std::tuple<std::decay_t<Arguments>...> arguments;
  std::apply(
      [&](auto&... argument) {
        base::fields::Reader reader(call.given, call.owner);
        const char* const* name = call.names.data();
        (reader(*name++, argument), ...);
      },
      arguments);
  return arguments;
}

template <class Result, class... Arguments>
void CallHandler(Control& control, Result (Control::*handler)(Arguments...), const MethodCall& call,
                 const Receiver& receiver) {
  std::apply(
      [&](const auto&... argument) {
        if constexpr (std::is_void_v<Result>) {
          (control.*handler)(argument...);
          receiver(Json(), "");
        } else {
          receiver((control.*handler)(argument...), "");
        }
      },
      Read<Arguments...>(call));
}

// For one that has its result later.
void CallHandler(Control& control, void (Control::*handler)(const std::string&, const Receiver&),
                 const MethodCall& call, const Receiver& receiver) {
  (control.*handler)(std::get<0>(Read<std::string>(call)), receiver);
}

template <auto kHandler>
void CallMethod(Control& control, const MethodCall& call, const Receiver& receiver) {
  CallHandler(control, kHandler, call, receiver);
}

}  // namespace

struct Control::Row {
  std::string_view method;
  void (*call)(Control& control, const MethodCall& call, const Receiver& receiver);
  ParameterNames parameters{};
};

const Control::Row Control::kRows[] = {
    {"state.get", &CallMethod<&Control::StateGet>},
    {"profile.use", &CallMethod<&Control::ProfileUse>, {"profile"}},
    {"features.set", &CallMethod<&Control::FeaturesSet>, {"key", "type", "text", "group"}},
    {"features.remove", &CallMethod<&Control::FeaturesRemove>, {"key"}},
    {"applications.setState", &CallMethod<&Control::ApplicationsSetState>, {"id", "state"}},
    {"applications.focus", &CallMethod<&Control::ApplicationsFocus>, {"id"}},
    {"applications.install", &CallMethod<&Control::ApplicationsInstall>, {"wgt", "folder"}},
    {"applications.launch", &CallMethod<&Control::ApplicationsLaunch>, {"id"}},
    {"applications.terminate", &CallMethod<&Control::ApplicationsTerminate>, {"id"}},
    {"keys.press", &CallMethod<&Control::KeysPress>, {"name", "long", "native"}},
    {"inputMethod.setDynamic", &CallMethod<&Control::InputMethodSetDynamic>, {"dynamic"}},
    {"settings.set", &CallMethod<&Control::SettingsSet>, {"key", "type", "value"}},
    {"settings.unset", &CallMethod<&Control::SettingsUnset>, {"key"}},
    {"screenSaver.activity", &CallMethod<&Control::ScreenSaverActivity>},
    {"clock.advance", &CallMethod<&Control::ClockAdvance>, {"ms"}},
    {"faults.set", &CallMethod<&Control::FaultsSet>, {"function", "code", "mode"}},
    {"faults.clear", &CallMethod<&Control::FaultsClear>, {"function"}},
    {"factoryReset", &CallMethod<&Control::FactoryReset>},
    {"markers.list", &CallMethod<&Control::MarkersList>},
    {"stat.read", &CallMethod<&Control::StatRead>, {"resource"}},
    {"debug.log", &CallMethod<&Control::DebugLog>, {"priority", "tag", "text", "count"}},
    {"debug.crash", &CallMethod<&Control::DebugCrash>, {"signal"}},
};

Control::Control(Television& television) : television_(television), resources_(television.host()) {}

void Control::Call(const std::string& method, const Json& parameters, const Receiver& receiver) {
  std::vector<std::string> names;
  for (const Row& row : kRows) {
    if (row.method == method) {
      const Json given = parameters.is_null() ? Json::object() : parameters;
      return row.call(*this, {"the parameters of " + method, row.parameters, given}, receiver);
    }
    names.emplace_back(row.method);
  }
  throw RequestError("There is no method " + Quoted(method) + "." +
                     base::DidYouMean(base::NearNames(method, names)));
}

Json Control::StateGet() { return television_.state().All(); }

void Control::StatRead(const std::string& resource, const Receiver& receiver) {
  resources_.Read(resource, receiver);
}

Json Control::MarkersList() { return base::ToJson(set().kernel_markers().list()); }

void Control::RequireTestHooks(const char* method) const {
  if (television_.options().test_hooks) return;
  throw RequestError(std::string(method) + " is for tests: start with --test-hooks to have it.");
}

void Control::DebugLog(std::optional<int> priority, const std::optional<std::string>& tag,
                       const std::string& text, std::optional<int64_t> count) {
  RequireTestHooks("debug.log");
  constexpr int64_t kMostLines = 100000;
  for (int64_t i = 0; i < std::min(count.value_or(1), kMostLines); ++i) {
    set().log().Write(LOG_ID_MAIN, priority.value_or(DLOG_INFO), tag.value_or("ORVANE"), text);
  }
}

void Control::DebugCrash(std::optional<int> signal) {
  RequireTestHooks("debug.crash");
  if (std::raise(signal.value_or(SIGABRT)) != 0) throw RequestError("There is no such signal.");
}

}  // namespace orvane::television
