// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/fields.h"

#include <cmath>

namespace orvane::television {

namespace {

constexpr double kExactIntegers = 9007199254740992;  // from here on a double passes some over

const picojson::object& ObjectOf(const picojson::value& value, const std::string& owner) {
  if (value.is<picojson::object>()) return value.get<picojson::object>();
  throw RequestError(owner + " has to be a JSON object, in braces.");
}

std::string Excerpt(const picojson::value& value) {
  constexpr size_t kShown = 60;
  const std::string text = value.serialize();
  return text.size() <= kShown ? text : text.substr(0, kShown) + "…";
}

}  // namespace

Fields::Fields(const picojson::value& value, std::string owner)
    : object_(ObjectOf(value, owner)), owner_(std::move(owner)) {}

const picojson::value* Fields::Find(const std::string& name) const {
  const auto found = object_.find(name);
  if (found == object_.end() || found->second.is<picojson::null>()) return nullptr;
  return &found->second;
}

const std::string& Fields::Text(const std::string& name) const {
  const picojson::value* const value = Find(name);
  if (value == nullptr || !value->is<std::string>()) Refuse(name, "a string");
  return value->get<std::string>();
}

std::string Fields::Text(const std::string& name, const std::string& otherwise) const {
  return Has(name) ? Text(name) : otherwise;
}

int64_t Fields::Integer(const std::string& name, int64_t lowest, int64_t highest) const {
  const picojson::value* const value = Find(name);
  const std::string wanted =
      "a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest);
  if (value == nullptr || !value->is<double>()) Refuse(name, wanted);
  const auto number = value->get<double>();
  if (std::trunc(number) != number || std::abs(number) > kExactIntegers) Refuse(name, wanted);
  const auto integer = static_cast<int64_t>(number);
  if (integer < lowest || integer > highest) Refuse(name, wanted);
  return integer;
}

int64_t Fields::Integer(const std::string& name, int64_t lowest, int64_t highest,
                        int64_t otherwise) const {
  return Has(name) ? Integer(name, lowest, highest) : otherwise;
}

bool Fields::Flag(const std::string& name, bool otherwise) const {
  const picojson::value* const value = Find(name);
  if (value == nullptr) return otherwise;
  if (!value->is<bool>()) Refuse(name, "true or false");
  return value->get<bool>();
}

const picojson::array& Fields::Array(const std::string& name) const {
  static const auto* const kNone = new picojson::array();
  const picojson::value* const value = Find(name);
  if (value == nullptr) return *kNone;
  if (!value->is<picojson::array>()) Refuse(name, "an array");
  return value->get<picojson::array>();
}

Fields Fields::Object(const std::string& name) const {
  const picojson::value* const value = Find(name);
  if (value == nullptr || !value->is<picojson::object>()) Refuse(name, "an object");
  return {value->get<picojson::object>(), name + " of " + owner_};
}

void Fields::Refuse(const std::string& name, const std::string& wanted) const {
  const picojson::value* const value = Find(name);
  const std::string what = "\"" + name + "\" of " + owner_ + " has to be " + wanted;
  if (value == nullptr) throw RequestError(what + ", but is not given.");
  throw RequestError(what + ", but is " + Excerpt(*value) + ".");
}

}  // namespace orvane::television
