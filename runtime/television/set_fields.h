// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "base/json_fields.h"
#include "tvset/applications.h"
#include "tvset/events.h"
#include "tvset/faults.h"
#include "tvset/features.h"
#include "tvset/input_method.h"
#include "tvset/key_grabs.h"
#include "tvset/log_format.h"
#include "tvset/windows.h"

// The set's own structs as JSON: the names that the simulator, the command line, the snapshot and
// the log's records have for their fields. See base/json_fields.h.
namespace tvset {

inline constexpr orvane::base::EnumName<FaultMode> kFaultModeNames[] = {
    {FaultMode::kOnce, "once"}, {FaultMode::kAlways, "always"}};
constexpr auto& EnumNames(FaultMode) { return kFaultModeNames; }

inline constexpr orvane::base::EnumName<FeatureGroup> kFeatureGroupNames[] = {
    {FeatureGroup::kPlatform, "platform"}, {FeatureGroup::kCustom, "custom"}};
constexpr auto& EnumNames(FeatureGroup) { return kFeatureGroupNames; }

inline constexpr orvane::base::EnumName<StackMode> kStackModeNames[] = {
    {StackMode::kNone, "NONE"}, {StackMode::kBelow, "BELOW"}, {StackMode::kAbove, "ABOVE"}};
constexpr auto& EnumNames(StackMode) { return kStackModeNames; }

inline constexpr orvane::base::EnumName<GrabMode> kGrabModeNames[] = {
    {GrabMode::kNormal, "normal"},
    {GrabMode::kTopmost, "topmost"},
    {GrabMode::kRegistered, "registered"}};
constexpr auto& EnumNames(GrabMode) { return kGrabModeNames; }

inline constexpr orvane::base::EnumName<KeyRoute> kKeyRouteNames[] = {
    {KeyRoute::kMandatory, "mandatory"},
    {KeyRoute::kRegistered, "registered"},
    {KeyRoute::kSpecialGrab, "specialGrab"},
    {KeyRoute::kNotRegistered, "notRegistered"},
    {KeyRoute::kGrabbedByOther, "grabbedByOther"},
    {KeyRoute::kNoPrivilege, "noPrivilege"},
    {KeyRoute::kNoFocus, "noFocus"}};
constexpr auto& EnumNames(KeyRoute) { return kKeyRouteNames; }

template <class Map>
void MapFields(Map& map, Application& application) {
  map("id", application.id);
  map("package", application.package);
  map.Optional("name", application.name);
  map.Optional("version", application.version);
  map.Optional("folder", application.folder);
  map.Optional("metadata", application.metadata);
  map.Optional("privileges", application.privileges);
}

template <class Map>
void MapFields(Map& map, Fault& fault) {
  map("function", fault.function);
  map("code", fault.code);
  map("mode", fault.mode);
  map.Optional("hits", fault.hits);
}

template <class Map>
void MapFields(Map& map, Feature& feature) {
  map("key", feature.key);
  map("type", feature.type);
  map("text", feature.text);
  map("group", feature.group);
}

template <class Map>
void MapFields(Map& map, KeyGrab& grab) {
  map("app", grab.app);
  map("key", grab.key_name);
  map("mode", grab.mode);
}

template <class Map>
void MapFields(Map& map, InputMethodState& state) {
  map("dynamic", state.dynamic_style);
  map("positioned", state.positioned);
  map("x", state.x);
  map("y", state.y);
  map("align", state.align);
  map("recommendedEnabled", state.recommended_words_enabled);
  map("recommendedWords", state.recommended_words);
}

template <class Map>
void MapFields(Map& map, KeyDelivery& delivery) {
  bool is_injected = delivery.press.source == KeyPress::Source::kComponent;
  map("key_name", delivery.key_name);
  map("key_code", delivery.key_code);
  map("app", delivery.app);
  map("delivered", delivery.delivered);
  map("reason", delivery.reason);
  map("text", delivery.text);
  map("injected", is_injected);
  map("long", delivery.press.is_long);
  map("native", delivery.press.is_native);
  map("time_ns", delivery.time_ns);
}

template <class Map>
void MapFields(Map& map, LogLine& line) {
  std::string letter(1, PriorityLetter(line.priority));
  map("time_ns", line.time_ns);
  map("pid", line.pid);
  map("tid", line.tid);
  map("priority", line.priority);
  map("letter", letter);
  map("tag", line.tag);
  map("text", line.text);
}

template <class Map>
void MapFields(Map& map, KernelMarker& marker) {
  map("time_ns", marker.time_ns);
  map("length", marker.length);
  map("text", marker.text);
}

template <class Map>
void MapFields(Map& map, ContextTask& task) {
  map("target", task.target);
  map("action", task.action);
}

}  // namespace tvset
