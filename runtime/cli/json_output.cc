// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/json_output.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>

#include "base/json_text.h"

namespace orvane::cli {

using picojson::value;

namespace {

// A double is the number that was meant wherever the text reads back as it.
void AppendNumber(double number, std::string* json) {
  constexpr double kLongest = 1e21;  // as scripts print numbers
  char text[64];
  const auto format = std::abs(number) < kLongest && std::trunc(number) == number
                          ? std::chars_format::fixed
                          : std::chars_format::general;
  const auto [end, error] = std::to_chars(text, text + sizeof text, number, format);
  if (error == std::errc()) json->append(text, end);
}

void AppendArray(const picojson::array& array, std::string* json);
void AppendObject(const picojson::object& object, std::string* json);

void Append(const value& part, std::string* json) {
  if (part.is<std::string>()) return base::AppendJsonString(part.get<std::string>(), json);
  if (part.is<double>()) return AppendNumber(part.get<double>(), json);
  if (part.is<picojson::array>()) {
    return AppendArray(part.get<picojson::array>(), json);
  }
  if (part.is<picojson::object>()) return AppendObject(part.get<picojson::object>(), json);
  json->append(part.serialize());
}

void AppendArray(const picojson::array& array, std::string* json) {
  json->push_back('[');
  for (size_t i = 0; i < array.size(); ++i) {
    if (i > 0) json->push_back(',');
    Append(array[i], json);
  }
  json->push_back(']');
}

void AppendObject(const picojson::object& object, std::string* json) {
  json->push_back('{');
  bool first = true;
  for (const auto& [name, member] : object) {
    if (!std::exchange(first, false)) json->push_back(',');
    base::AppendJsonString(name, json);
    json->push_back(':');
    Append(member, json);
  }
  json->push_back('}');
}

}  // namespace

std::string JsonText(const value& json) {
  std::string text;
  Append(json, &text);
  return text;
}

void PrintJson(const value& json) {
  const std::string line = JsonText(json) + '\n';
  std::fwrite(line.data(), 1, line.size(), stdout);
}

}  // namespace orvane::cli
