// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Methods about the set itself: keys, profile, features, screen saver, faults.
#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

#include "base/near_names.h"
#include "television/control.h"

namespace orvane::television {

using picojson::value;

namespace {

tvset::FeatureGroup ParseGroup(const Fields& parameters) {
  const std::string name = parameters.Text("group", "custom");
  if (name == GroupName(tvset::FeatureGroup::kPlatform)) return tvset::FeatureGroup::kPlatform;
  if (name == GroupName(tvset::FeatureGroup::kCustom)) return tvset::FeatureGroup::kCustom;
  parameters.Refuse("group", R"("platform" or "custom")");
}

tvset::FaultMode ParseFaultMode(const Fields& parameters) {
  const std::string name = parameters.Text("mode", "always");
  if (name == FaultModeName(tvset::FaultMode::kOnce)) return tvset::FaultMode::kOnce;
  if (name == FaultModeName(tvset::FaultMode::kAlways)) return tvset::FaultMode::kAlways;
  parameters.Refuse("mode", R"("once" or "always")");
}

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

value Texts(const std::vector<std::string>& texts) {
  picojson::array array;
  for (const std::string& text : texts) array.emplace_back(text);
  return value(array);
}

}  // namespace

value Control::KeysPress(const Fields& parameters) {
  const std::string name = FindKey(set().key_grabs(), parameters.Text("name"));
  const bool is_long = parameters.Flag("long", false);
  const std::string symbol = is_long ? tvset::SymbolOfHeldKey(name) : name;
  // One that is another key when it is held is pressed once.
  tvset::KeyPress press;
  press.is_long = is_long && symbol == name;
  press.is_native = parameters.Flag("native", false);
  if (symbol != name) press.held = name;
  return value(EventStream::KeyEvent(set().key_grabs().Press(symbol, press)));
}

value Control::ProfileUse(const Fields& parameters) {
  set().UseProfile(parameters.Text("profile"));
  return {};
}

value Control::FeaturesSet(const Fields& parameters) {
  set().features().Set(parameters.Text("key"), parameters.Text("type"), parameters.Text("text"),
                       ParseGroup(parameters));
  return {};
}

value Control::FeaturesRemove(const Fields& parameters) {
  set().features().Remove(parameters.Text("key"));
  return {};
}

value Control::InputMethodSetDynamic(const Fields& parameters) {
  if (!parameters.Has("dynamic")) parameters.Refuse("dynamic", "true or false");
  set().input_method().set_dynamic_style(parameters.Flag("dynamic", true));
  return {};
}

value Control::ScreenSaverActivity(const Fields&) {
  set().screen_saver().NoteInput();
  television_.events().Touch(Part::kScreenSaver);
  return television_.state().ValueOf(Part::kScreenSaver);
}

value Control::ClockAdvance(const Fields& parameters) {
  constexpr int64_t kLongestStep = 366LL * 24 * 60 * 60 * 1000;
  const std::chrono::milliseconds step(parameters.Integer("ms", 0, kLongestStep));
  if (television_.clock().shift() + step > ShiftedClock::kMostShift) {
    throw RequestError(
        "The set's clock is a hundred years ahead already. Start the simulator again.");
  }
  television_.clock().Advance(step);
  television_.events().Touch(Part::kScreenSaver);
  return television_.state().ValueOf(Part::kScreenSaver);
}

value Control::FaultsSet(const Fields& parameters) {
  const int64_t code =
      parameters.Integer("code", std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  set().faults().Fail(parameters.Text("function"), static_cast<int>(code),
                      ParseFaultMode(parameters));
  return {};
}

value Control::FaultsClear(const Fields& parameters) {
  if (parameters.Has("function")) {
    set().faults().Clear(parameters.Text("function"));
  } else {
    set().faults().ClearAll();
  }
  return {};
}

value Control::FunctionsList(const Fields&) {
  return value(picojson::object{{"functions", Texts(tvset::FaultTable::functions())},
                                {"accesses", Texts(tvset::FaultTable::accesses())}});
}

}  // namespace orvane::television
