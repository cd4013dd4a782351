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
// the log's records have for their fields. What the fields mean, and their units, stands at the
// structs. See base/json_fields.h for how these functions are used; they are in the set's namespace
// to be found there, and here because the set knows no JSON.
//
// All are read as well as written, unless a comment says otherwise. Who renames a field breaks the
// scripts of people.
namespace tvset {

// Enumerations by their names. A method's parameter or a snapshot with another name is refused with
// the list of those that there are.

// How long a fault stays: for the next call of the function, or until it is cleared.
inline constexpr orvane::base::EnumName<FaultMode> kFaultModeNames[] = {
    {FaultMode::kOnce, "once"}, {FaultMode::kAlways, "always"}};
constexpr auto& EnumNames(FaultMode) { return kFaultModeNames; }

// Which of the platform's functions read a feature.
inline constexpr orvane::base::EnumName<FeatureGroup> kFeatureGroupNames[] = {
    {FeatureGroup::kPlatform, "platform"}, {FeatureGroup::kCustom, "custom"}};
constexpr auto& EnumNames(FeatureGroup) { return kFeatureGroupNames; }

// As a page sends them, too.
inline constexpr orvane::base::EnumName<StackMode> kStackModeNames[] = {
    {StackMode::kNone, "NONE"}, {StackMode::kBelow, "BELOW"}, {StackMode::kAbove, "ABOVE"}};
constexpr auto& EnumNames(StackMode) { return kStackModeNames; }

// Not as a page sends them: there they are the platform's numbers.
inline constexpr orvane::base::EnumName<GrabMode> kGrabModeNames[] = {
    {GrabMode::kNormal, "normal"},
    {GrabMode::kTopmost, "topmost"},
    {GrabMode::kRegistered, "registered"}};
constexpr auto& EnumNames(GrabMode) { return kGrabModeNames; }

// Why a key went where it went. Written only.
inline constexpr orvane::base::EnumName<KeyRoute> kKeyRouteNames[] = {
    {KeyRoute::kMandatory, "mandatory"},
    {KeyRoute::kRegistered, "registered"},
    {KeyRoute::kSpecialGrab, "specialGrab"},
    {KeyRoute::kNotRegistered, "notRegistered"},
    {KeyRoute::kGrabbedByOther, "grabbedByOther"},
    {KeyRoute::kNoPrivilege, "noPrivilege"},
    {KeyRoute::kNoFocus, "noFocus"}};
constexpr auto& EnumNames(KeyRoute) { return kKeyRouteNames; }

// Structs. "Optional" fields may be left out when they are read; of those, only one that is
// std::nullopt is left out when it is written.

// An application as it is to be installed: in the options of a television, in a snapshot and as the
// answer of applications.install. The state adds to it whether and how it runs.
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

// A row of the part "faults", also in a snapshot: how often a fault was met goes on with it.
template <class Map>
void MapFields(Map& map, Fault& fault) {
  map("function", fault.function);
  map("code", fault.code);
  map("mode", fault.mode);
  map.Optional("hits", fault.hits);
}

// A row of the part "features", also in a snapshot.
template <class Map>
void MapFields(Map& map, Feature& feature) {
  map("key", feature.key);
  map("type", feature.type);
  map("text", feature.text);
  map("group", feature.group);
}

// A row of the part "keyGrabs", also in a snapshot.
template <class Map>
void MapFields(Map& map, KeyGrab& grab) {
  map("app", grab.app);
  map("key", grab.key_name);
  map("mode", grab.mode);
}

// The part "inputMethod", also in a snapshot.
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

// What follows happens, and is told: events, and rows of what is kept of them. Written only.

// The event "key" and the answer of keys.press. "injected": a component of the television pressed
// it, not the viewer.
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

// A line of the event "log", which gives it its number besides. "letter" is that of the priority,
// for those who show it; the number is what they compare.
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

// The event "kernelMarker" and a row of markers.list.
template <class Map>
void MapFields(Map& map, KernelMarker& marker) {
  map("time_ns", marker.time_ns);
  map("length", marker.length);
  map("text", marker.text);
}

// The event "contextTask".
template <class Map>
void MapFields(Map& map, ContextTask& task) {
  map("target", task.target);
  map("action", task.action);
}

}  // namespace tvset
