// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the set itself: keys, profile, features, screen saver, faults.
#include <algorithm>
#include <chrono>
#include <string_view>
#include <vector>

#include "base/near_names.h"
#include "television/control.h"
#include "television/request_error.h"

namespace orvane::television {

namespace {

bool IsSameButForCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char left, char right) { return lower(left) == lower(right); });
}

bool IsCalled(const tvset::RemoteKey& key, const std::string& name) {
  return IsSameButForCase(key.name, name) || IsSameButForCase(key.name, "XF86" + name) ||
         std::any_of(key.page_names.begin(), key.page_names.end(),
                     [&](const std::string& own) { return IsSameButForCase(own, name); });
}

// The symbol of a key by what a person calls it: "XF86Red", "red", or "ColorF0Red" as pages do.
// Throws RequestError.
std::string FindKey(const tvset::KeyGrabs& keys, const std::string& name) {
  if (keys.IsKnownKey(name)) return name;
  std::vector<std::string> names;
  for (const tvset::RemoteKey& key : keys.known_keys()) {
    if (IsCalled(key, name)) return key.name;
    names.push_back(key.name);
    names.insert(names.end(), key.page_names.begin(), key.page_names.end());
  }
  const std::vector<std::string> near = base::NearNames(name, names);
  throw RequestError("No key of the remote control is called \"" + name + "\"." +
                     (near.empty() ? " The simulator lists all of them, and state.get does."
                                   : base::DidYouMean(near)));
}

}  // namespace

Json Control::KeysPress(const KeyParameters& parameters) {
  const std::string name = FindKey(set().key_grabs(), parameters.name);
  const std::string symbol = parameters.is_long ? tvset::SymbolOfHeldKey(name) : name;
  // One that is another key when it is held is pressed once.
  tvset::KeyPress press;
  press.is_long = parameters.is_long && symbol == name;
  press.is_native = parameters.is_native;
  if (symbol != name) press.held = name;
  return base::ToJson(set().key_grabs().Press(symbol, press));
}

Json Control::ProfileUse(const ProfileParameters& parameters) {
  set().UseProfile(parameters.profile);
  return {};
}

Json Control::FeaturesSet(const FeatureParameters& parameters) {
  set().features().Set(parameters.key, parameters.type, parameters.text, parameters.group);
  return {};
}

Json Control::FeaturesRemove(const KeyedParameters& parameters) {
  set().features().Remove(parameters.key);
  return {};
}

Json Control::InputMethodSetDynamic(const InputMethodParameters& parameters) {
  set().input_method().set_dynamic_style(parameters.dynamic);
  return {};
}

Json Control::ScreenSaverActivity(const NoParameters&) {
  set().screen_saver().NoteInput();
  television_.listener().OnTouched(Part::kScreenSaver);
  return television_.state().ValueOf(Part::kScreenSaver);
}

Json Control::ClockAdvance(const ClockParameters& parameters) {
  const std::chrono::milliseconds step(parameters.ms);
  if (television_.clock().shift() + step > ShiftedClock::kMostShift) {
    throw RequestError(
        "The set's clock is a hundred years ahead already. Start the simulator again.");
  }
  television_.clock().Advance(step);
  television_.listener().OnTouched(Part::kScreenSaver);
  return television_.state().ValueOf(Part::kScreenSaver);
}

Json Control::FaultsSet(const FaultParameters& parameters) {
  set().faults().Fail(parameters.function, parameters.code, parameters.mode);
  return {};
}

Json Control::FaultsClear(const FunctionParameters& parameters) {
  if (parameters.function) {
    set().faults().Clear(*parameters.function);
  } else {
    set().faults().ClearAll();
  }
  return {};
}

Json Control::FunctionsList(const NoParameters&) {
  return {{"functions", tvset::FaultTable::functions()},
          {"accesses", tvset::FaultTable::accesses()}};
}

}  // namespace orvane::television
