// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "base/json.h"
#include "television/control_parameters.h"
#include "television/resource_reader.h"
#include "television/television.h"

namespace orvane::television {

// What people and tools ask of the set, by the names that the simulator and the command line use
// too; each takes the parameters of its struct in control_parameters.h. Borrows the television,
// which has its extensions while this object lives. Belongs to the extension thread.
class Control {
 public:
  // Called once for a call that did not throw: before it returns, but for stat.read, where the
  // library's thread makes it. `error` is empty when there is a result.
  using Receiver = std::function<void(const Json& result, const std::string& error)>;

  explicit Control(Television& television);
  ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // `parameters` is null or an object. Throws RequestError, base::JsonError, app::AppError or
  // tvset::SetError: what() is for a person.
  void Call(const std::string& method, const Json& parameters, const Receiver& receiver);

 private:
  struct Row;
  static const Row kRows[];

  Json StateGet(const NoParameters&);
  Json ProfileUse(const ProfileParameters& parameters);
  Json FeaturesSet(const FeatureParameters& parameters);
  Json FeaturesRemove(const KeyedParameters& parameters);
  Json ApplicationsSetState(const ApplicationStateParameters& parameters);
  Json ApplicationsFocus(const ApplicationParameters& parameters);
  Json ApplicationsInstall(const InstallParameters& parameters);
  Json ApplicationsLaunch(const ApplicationParameters& parameters);
  Json ApplicationsTerminate(const ApplicationParameters& parameters);
  Json KeysPress(const KeyParameters& parameters);
  Json InputMethodSetDynamic(const InputMethodParameters& parameters);
  Json SettingsList(const NoParameters&);
  Json SettingsSet(const SettingParameters& parameters);
  Json SettingsGet(const KeyedParameters& parameters);
  Json SettingsUnset(const KeyedParameters& parameters);
  Json ScreenSaverActivity(const NoParameters&);
  Json ClockAdvance(const ClockParameters& parameters);
  Json FaultsSet(const FaultParameters& parameters);
  Json FaultsClear(const FunctionParameters& parameters);
  Json FunctionsList(const NoParameters&);
  Json FactoryReset(const NoParameters&);
  Json MarkersList(const NoParameters&);
  Json LogTail(const LogTailParameters& parameters);
  Json LogWrite(const LogWriteParameters& parameters);
  Json DebugCrash(const CrashParameters& parameters);
  void StatRead(const ResourceParameters& parameters, const Receiver& receiver);

  tvset::Set& set() { return television_.set(); }

  Television& television_;
  ResourceReader resources_;
};

}  // namespace orvane::television
