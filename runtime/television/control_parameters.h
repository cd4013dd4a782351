// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>
#include <cstdint>
#include <optional>
#include <string>

#include "base/json_fields.h"
#include "television/set_fields.h"

// The parameters of the control methods, each field by its name.
namespace orvane::television {

struct NoParameters {};
template <class Map>
void MapFields(Map&, NoParameters&) {}

struct ApplicationParameters {
  std::string id;
};
template <class Map>
void MapFields(Map& map, ApplicationParameters& parameters) {
  map("id", parameters.id);
}

struct ApplicationStateParameters {
  std::string id;
  Json state;  // the name or the number of an app_state_e
};
template <class Map>
void MapFields(Map& map, ApplicationStateParameters& parameters) {
  map("id", parameters.id);
  map("state", parameters.state);
}

struct InstallParameters {
  std::optional<std::string> folder;
  std::optional<std::string> wgt;  // in place of the folder
};
template <class Map>
void MapFields(Map& map, InstallParameters& parameters) {
  map("wgt", parameters.wgt);
  map("folder", parameters.folder);
}

struct ClockParameters {
  int64_t ms = 0;
};
template <class Map>
void MapFields(Map& map, ClockParameters& parameters) {
  map("ms", parameters.ms, base::Range{0, 366LL * 24 * 60 * 60 * 1000});
}

struct CrashParameters {
  int signal = SIGABRT;
};
template <class Map>
void MapFields(Map& map, CrashParameters& parameters) {
  map.Optional("signal", parameters.signal, base::Range{1, 31});
}

struct FaultParameters {
  std::string function;
  int code = 0;
  tvset::FaultMode mode = tvset::FaultMode::kAlways;
};
template <class Map>
void MapFields(Map& map, FaultParameters& parameters) {
  map("function", parameters.function);
  map("code", parameters.code);
  map.Optional("mode", parameters.mode);
}

struct FunctionParameters {
  std::optional<std::string> function;  // empty: all of them
};
template <class Map>
void MapFields(Map& map, FunctionParameters& parameters) {
  map("function", parameters.function);
}

struct FeatureParameters {
  std::string key;
  std::string type;
  std::string text;
  tvset::FeatureGroup group = tvset::FeatureGroup::kCustom;
};
template <class Map>
void MapFields(Map& map, FeatureParameters& parameters) {
  map("key", parameters.key);
  map("type", parameters.type);
  map("text", parameters.text);
  map.Optional("group", parameters.group);
}

struct InputMethodParameters {
  bool dynamic = true;
};
template <class Map>
void MapFields(Map& map, InputMethodParameters& parameters) {
  map("dynamic", parameters.dynamic);
}

struct KeyParameters {
  std::string name;
  bool is_long = false;
  bool is_native = false;
};
template <class Map>
void MapFields(Map& map, KeyParameters& parameters) {
  map("name", parameters.name);
  map.Optional("long", parameters.is_long);
  map.Optional("native", parameters.is_native);
}

constexpr int64_t kMostLogLines = 100000;

struct LogTailParameters {
  int64_t count = 1000;
  Json level;  // as ParsePriority takes it
  std::string tag;
};
template <class Map>
void MapFields(Map& map, LogTailParameters& parameters) {
  map.Optional("count", parameters.count, base::Range{1, kMostLogLines});
  map.Optional("level", parameters.level);
  map.Optional("tag", parameters.tag);
}

struct LogWriteParameters {
  Json priority;  // as ParsePriority takes it
  std::string tag = "ORVANE";
  std::string text;
  int64_t count = 1;
};
template <class Map>
void MapFields(Map& map, LogWriteParameters& parameters) {
  map.Optional("priority", parameters.priority);
  map.Optional("tag", parameters.tag);
  map("text", parameters.text);
  map.Optional("count", parameters.count, base::Range{1, kMostLogLines});
}

struct ProfileParameters {
  std::string profile;
};
template <class Map>
void MapFields(Map& map, ProfileParameters& parameters) {
  map("profile", parameters.profile);
}

struct ResourceParameters {
  std::string resource;
};
template <class Map>
void MapFields(Map& map, ResourceParameters& parameters) {
  map("resource", parameters.resource);
}

// Of a setting or a feature.
struct KeyedParameters {
  std::string key;
};
template <class Map>
void MapFields(Map& map, KeyedParameters& parameters) {
  map("key", parameters.key);
}

struct SettingParameters {
  std::string key;
  std::optional<std::string> type;  // empty: what the value's own type says
  Json value;
};
template <class Map>
void MapFields(Map& map, SettingParameters& parameters) {
  map("key", parameters.key);
  map("type", parameters.type);
  map("value", parameters.value);
}

}  // namespace orvane::television
