// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string>
#include <string_view>

#include <picojson.h>

#include "television/installed_applications.h"
#include "tvset/set.h"

namespace orvane::television {

// What of the set is told as one when it changes.
enum class Part {
  kProfile,
  kPanel,
  kFeatures,
  kApplications,
  kFocus,
  kWindows,
  kInputMethod,
  kKeyGrabs,
  kSettings,
  kScreenSaver,
  kFaults,
};
inline constexpr std::array<Part, 11> kParts{Part::kProfile,      Part::kPanel,    Part::kFeatures,
                                             Part::kApplications, Part::kFocus,    Part::kWindows,
                                             Part::kInputMethod,  Part::kKeyGrabs, Part::kSettings,
                                             Part::kScreenSaver,  Part::kFaults};

// The set's state as JSON, as people see it. Borrows the set and the applications, which outlive
// it. Any thread.
class SetState {
 public:
  // `main_app` is the application whose pages the process serves.
  SetState(tvset::Set& set, const InstalledApplications& applications, std::string main_app);

  // The name of the part's event.
  static std::string_view NameOf(Part part);
  picojson::value ValueOf(Part part) const;

  // Every part, and what never changes.
  picojson::value All() const;

  static picojson::value SettingJson(const tvset::Setting& setting);

 private:
  picojson::value Profile() const;
  picojson::value Panel() const;
  picojson::value Features() const;
  picojson::value Applications() const;
  picojson::value Windows() const;
  picojson::value InputMethod() const;
  picojson::value KeyGrabs() const;
  picojson::value Keys() const;
  picojson::value Settings() const;
  picojson::value ScreenSaver() const;
  picojson::value Faults() const;
  picojson::value Uuid() const;

  tvset::Set& set_;
  const InstalledApplications& applications_;
  const std::string main_app_;
};

// Names for the set's numbers; those of setting types are the command line's. The parsers throw
// RequestError.
std::string_view AppStateName(int state);  // "UNDEFINED" for a number without a name
int ParseAppState(const std::string& name);
std::string_view SettingTypeName(int type);  // "unknown" for a type without a name
int ParseSettingType(const std::string& name);
std::string_view StackModeName(tvset::StackMode mode);
std::string_view GrabModeName(tvset::GrabMode mode);
std::string_view GroupName(tvset::FeatureGroup group);
std::string_view FaultModeName(tvset::FaultMode mode);

}  // namespace orvane::television
