// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/json.h"
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

  // One per method. The arguments are its parameters; a std::optional one may be left out.
  Json StateGet();
  void ProfileUse(const std::string& profile);
  void FeaturesSet(const std::string& key, const std::string& type, const std::string& text,
                   std::optional<tvset::FeatureGroup> group);
  void FeaturesRemove(const std::string& key);
  void ApplicationsSetState(const std::string& id, const Json& state);
  void ApplicationsFocus(const std::string& id);
  Json ApplicationsInstall(const std::optional<std::string>& wgt,
                           const std::optional<std::string>& folder);
  void ApplicationsLaunch(const std::string& id);
  void ApplicationsTerminate(const std::string& id);
  Json KeysPress(const std::string& name, std::optional<bool> is_long,
                 std::optional<bool> is_native);
  void InputMethodSetDynamic(bool dynamic);
  void SettingsSet(const std::string& key, const std::optional<std::string>& type,
                   const Json& value);
  void SettingsUnset(const std::string& key);
  Json ScreenSaverActivity();
  Json ClockAdvance(int64_t ms);
  void FaultsSet(const std::string& function, int code, std::optional<tvset::FaultMode> mode);
  void FaultsClear(const std::optional<std::string>& function);
  void FactoryReset();
  Json MarkersList();
  void StatRead(const std::string& resource, const Receiver& receiver);
  void DebugLog(std::optional<int> priority, const std::optional<std::string>& tag,
                const std::string& text, std::optional<int64_t> count);
  void DebugCrash(std::optional<int> signal);

  void RequireTestHooks(const char* method) const;
  tvset::Set& set() { return television_.set(); }

  Television& television_;
  ResourceReader resources_;
};

}  // namespace orvane::television
