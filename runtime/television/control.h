// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <picojson.h>

#include "television/fields.h"
#include "television/television.h"

namespace orvane::television {

class ResourceReader;

// What people and tools ask of the set, by the names that the simulator and the command line use
// too. Borrows the television and the outbox. Belongs to the extension thread.
class Control {
 public:
  Control(Television& television, Outbox& outbox);
  ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // The result; empty when the answer to the request `id` comes later, through the outbox. Throws
  // RequestError or tvset::SetError.
  std::optional<picojson::value> Call(int64_t id, const std::string& method,
                                      const Fields& parameters);

 private:
  using Handler = picojson::value (Control::*)(const Fields& parameters);
  struct Row;
  static const Row kRows[];

  picojson::value StateGet(const Fields& parameters);
  picojson::value ProfileUse(const Fields& parameters);
  picojson::value FeaturesSet(const Fields& parameters);
  picojson::value FeaturesRemove(const Fields& parameters);
  picojson::value ApplicationsSetState(const Fields& parameters);
  picojson::value ApplicationsFocus(const Fields& parameters);
  picojson::value ApplicationsInstall(const Fields& parameters);
  picojson::value ApplicationsLaunch(const Fields& parameters);
  picojson::value ApplicationsTerminate(const Fields& parameters);
  picojson::value KeysPress(const Fields& parameters);
  picojson::value InputMethodSetDynamic(const Fields& parameters);
  picojson::value SettingsList(const Fields& parameters);
  picojson::value SettingsSet(const Fields& parameters);
  picojson::value SettingsGet(const Fields& parameters);
  picojson::value SettingsUnset(const Fields& parameters);
  picojson::value ScreenSaverActivity(const Fields& parameters);
  picojson::value ClockAdvance(const Fields& parameters);
  picojson::value FaultsSet(const Fields& parameters);
  picojson::value FaultsClear(const Fields& parameters);
  picojson::value FunctionsList(const Fields& parameters);
  picojson::value FactoryReset(const Fields& parameters);
  picojson::value MarkersList(const Fields& parameters);
  picojson::value LogTail(const Fields& parameters);
  picojson::value LogWrite(const Fields& parameters);
  picojson::value DebugCrash(const Fields& parameters);

  tvset::Set& set() { return television_.set(); }

  Television& television_;
  const std::unique_ptr<ResourceReader> resources_;
};

}  // namespace orvane::television
