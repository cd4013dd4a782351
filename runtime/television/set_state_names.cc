// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include <app_context.h>
#include <vconf.h>

#include "television/request_error.h"
#include "television/set_state.h"

namespace orvane::television {

namespace {

constexpr std::pair<int, std::string_view> kAppStates[] = {{APP_STATE_UNDEFINED, "UNDEFINED"},
                                                           {APP_STATE_FOREGROUND, "FOREGROUND"},
                                                           {APP_STATE_BACKGROUND, "BACKGROUND"},
                                                           {APP_STATE_SERVICE, "SERVICE"},
                                                           {APP_STATE_TERMINATED, "TERMINATED"}};

constexpr std::pair<int, std::string_view> kSettingTypes[] = {{VCONF_TYPE_STRING, "string"},
                                                              {VCONF_TYPE_INT, "int"},
                                                              {VCONF_TYPE_DOUBLE, "double"},
                                                              {VCONF_TYPE_BOOL, "bool"}};

}  // namespace

std::string_view AppStateName(int state) {
  for (const auto& [number, name] : kAppStates) {
    if (number == state) return name;
  }
  return "UNDEFINED";
}

int ParseAppState(const std::string& name) {
  std::string names;
  for (const auto& [number, known] : kAppStates) {
    if (known == name) return number;
    names.append(names.empty() ? "" : ", ").append(known);
  }
  throw RequestError("There is no application state \"" + name + "\". There are " + names +
                     ", and the numbers 0 to 7.");
}

std::string_view SettingTypeName(int type) {
  for (const auto& [number, name] : kSettingTypes) {
    if (number == type) return name;
  }
  return "unknown";
}

int ParseSettingType(const std::string& name) {
  for (const auto& [number, known] : kSettingTypes) {
    if (known == name) return number;
  }
  throw RequestError("There is no setting type \"" + name +
                     "\". There are string, int, double and bool.");
}

std::string_view StackModeName(tvset::StackMode mode) {
  switch (mode) {
    case tvset::StackMode::kNone:
      return "NONE";
    case tvset::StackMode::kBelow:
      return "BELOW";
    case tvset::StackMode::kAbove:
      return "ABOVE";
  }
  return "NONE";
}

std::string_view GrabModeName(tvset::GrabMode mode) {
  switch (mode) {
    case tvset::GrabMode::kNormal:
      return "normal";
    case tvset::GrabMode::kTopmost:
      return "topmost";
    case tvset::GrabMode::kRegistered:
      return "registered";
  }
  return "normal";
}

std::string_view GroupName(tvset::FeatureGroup group) {
  return group == tvset::FeatureGroup::kPlatform ? "platform" : "custom";
}

std::string_view FaultModeName(tvset::FaultMode mode) {
  return mode == tvset::FaultMode::kOnce ? "once" : "always";
}

}  // namespace orvane::television
