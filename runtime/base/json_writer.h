// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/json_text.h"

namespace orvane::base {

// Writes one JSON object, member by member, in the order of the calls.
class JsonWriter {
 public:
  JsonWriter& Raw(std::string_view name, std::string_view json) {
    json_ += json_.size() == 1 ? "\"" : ",\"";
    json_.append(name).append("\":").append(json);
    return *this;
  }
  JsonWriter& Text(std::string_view name, std::string_view value) {
    Raw(name, {});
    base::AppendJsonString(value, &json_);
    return *this;
  }
  JsonWriter& Number(std::string_view name, int64_t value) {
    return Raw(name, std::to_string(value));
  }
  JsonWriter& Flag(std::string_view name, bool value) {
    return Raw(name, value ? "true" : "false");
  }

  // The whole object. Nothing may be written after it.
  std::string Take() {
    json_ += '}';
    return std::move(json_);
  }

 private:
  std::string json_ = "{";
};

template <typename Text,
          typename = std::enable_if_t<std::is_convertible_v<const Text&, std::string_view>>>
std::string JsonText(const Text& text) {
  std::string json;
  base::AppendJsonString(text, &json);
  return json;
}

// A JSON array of what `to_json(item)` gives for each item.
template <typename Items, typename ToJson>
std::string JsonArray(const Items& items, ToJson to_json) {
  std::string json = "[";
  for (const auto& item : items) {
    if (json.size() > 1) json += ',';
    json += to_json(item);
  }
  json += ']';
  return json;
}

}  // namespace orvane::base
