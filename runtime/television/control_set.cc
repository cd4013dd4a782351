// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the set itself: keys, profile, features, screen saver, faults.
#include <algorithm>
#include <chrono>
#include <locale>
#include <vector>

#include <boost/algorithm/string/predicate.hpp>

#include "base/near_names.h"
#include "television/control.h"
#include "television/request_error.h"

namespace orvane::television {

namespace {

bool IsCalled(const tvset::RemoteKey& key, const std::string& name) {
  using boost::algorithm::iequals;
  const std::locale& ascii = std::locale::classic();
  return iequals(key.name, name, ascii) || iequals(key.name, "XF86" + name, ascii) ||
         std::any_of(key.page_names.begin(), key.page_names.end(),
                     [&](const std::string& own) { return iequals(own, name, ascii); });
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

Json Control::KeysPress(const std::string& name, std::optional<bool> is_long,
                        std::optional<bool> is_native) {
  const std::string key = FindKey(set().key_grabs(), name);
  const bool is_held = is_long.value_or(false);
  const std::string symbol = is_held ? tvset::SymbolOfHeldKey(key) : key;
  // One that is another key when it is held is pressed once.
  tvset::KeyPress press;
  press.is_long = is_held && symbol == key;
  press.is_native = is_native.value_or(false);
  if (symbol != key) press.held = key;
  return base::ToJson(set().key_grabs().Press(symbol, press));
}

void Control::ProfileUse(const std::string& profile) { set().UseProfile(profile); }

void Control::FeaturesSet(const std::string& key, const std::string& type, const std::string& text,
                          std::optional<tvset::FeatureGroup> group) {
  set().features().Set(key, type, text, group.value_or(tvset::FeatureGroup::kCustom));
}

void Control::FeaturesRemove(const std::string& key) { set().features().Remove(key); }

void Control::InputMethodSetDynamic(bool dynamic) {
  set().input_method().set_dynamic_style(dynamic);
}

Json Control::ScreenSaverActivity() {
  set().screen_saver().NoteInput();
  television_.listener().OnTouched(Part::kScreenSaver);
  return television_.state().ValueOf(Part::kScreenSaver);
}

Json Control::ClockAdvance(int64_t ms) {
  constexpr std::chrono::milliseconds kMostStep = std::chrono::hours(366 * 24);
  if (ms < 0 || ms > kMostStep.count()) {
    const Json given = ms;
    base::fields::Refuse("\"ms\" of the parameters of clock.advance",
                         base::fields::WholeNumber("0", std::to_string(kMostStep.count())), &given);
  }
  const std::chrono::milliseconds step(ms);
  if (television_.clock().shift() + step > ShiftedClock::kMostShift) {
    throw RequestError(
        "The set's clock is a hundred years ahead already. Start the simulator again.");
  }
  television_.clock().Advance(step);
  television_.listener().OnTouched(Part::kScreenSaver);
  return television_.state().ValueOf(Part::kScreenSaver);
}

void Control::FaultsSet(const std::string& function, int code,
                        std::optional<tvset::FaultMode> mode) {
  set().faults().Fail(function, code, mode.value_or(tvset::FaultMode::kAlways));
}

void Control::FaultsClear(const std::optional<std::string>& function) {
  if (function) {
    set().faults().Clear(*function);
  } else {
    set().faults().ClearAll();
  }
}

}  // namespace orvane::television
