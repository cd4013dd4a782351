// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace orvane {

// JSON as every part of the runtime holds it. Numbers are exact as far as 64 bits go.
using Json = nlohmann::json;

}  // namespace orvane

namespace orvane::base {

// A text is no JSON, or a value is not what it has to be. what() is for people: it names the value
// and says what is wanted, and ends with a full stop.
class JsonError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Arrays and objects nest no deeper in what is read.
inline constexpr int kMaxJsonDepth = 64;

// The one value that the text holds, whoever wrote it. An escape of half a character counts as
// U+FFFD. Throws JsonError, also for a number beyond a double's range.
Json ParseJson(std::string_view text, int max_depth = kMaxJsonDepth);

// One line, without blanks. Bytes that belong to no character become U+FFFD.
std::string JsonText(const Json& json);
// The same, behind what `text` has.
void AppendJson(const Json& json, std::string* text);
void AppendJsonString(std::string_view value, std::string* text);

// The beginning of the value's text, short enough for a message to people.
std::string Excerpt(const Json& json);

}  // namespace orvane::base
