// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "json_writer.h"

#include <algorithm>

namespace common {

namespace {

constexpr size_t kUsualReply = 64;

bool IsPlain(char c) {
  return static_cast<unsigned char>(c) >= ' ' && c != '"' && c != '\\' && c != '/' && c != 0x7f;
}

void Append(const std::string& string, std::string& text) {
  if (!std::all_of(string.begin(), string.end(), IsPlain)) {
    text += picojson::value(string).serialize();
    return;
  }
  (text += '"').append(string) += '"';
}

void Append(const picojson::object& object, std::string& text) {
  char before = '{';
  for (const auto& [name, value] : object) {
    text += before;
    Append(name, text);
    text += ':';
    if (value.is<std::string>()) {
      Append(value.get<std::string>(), text);
    } else if (value.is<picojson::object>()) {
      Append(value.get<picojson::object>(), text);
    } else {
      text += value.serialize();
    }
    before = ',';
  }
  text += object.empty() ? "{}" : "}";
}

}  // namespace

std::string WriteJson(const picojson::object& object) {
  std::string text;
  text.reserve(kUsualReply);
  Append(object, text);
  return text;
}

}  // namespace common
