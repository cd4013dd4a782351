// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json.h"

#include "base/utf8.h"

namespace orvane::base {

namespace {

Json ParseWellFormed(std::string_view text, int max_depth) {
  return Json::parse(text, [max_depth](int depth, Json::parse_event_t event, const Json&) {
    const bool begins =
        event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
    if (!begins || depth < max_depth) return true;
    throw JsonError("The JSON nests deeper than " + std::to_string(max_depth) + " levels.");
  });
}

}  // namespace

Json ParseJson(std::string_view text, int max_depth) {
  try {
    return ParseWellFormed(text, max_depth);
  } catch (const Json::out_of_range&) {
    throw JsonError("A number in the JSON is beyond the range of a double.");
  } catch (const Json::parse_error& error) {
    std::string whole = WithoutHalfCharacters(text);
    if (whole != text) return ParseJson(whole, max_depth);
    throw JsonError("The text is no JSON: something is wrong at byte " +
                    std::to_string(error.byte) + ".");
  }
}

std::string JsonText(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string Excerpt(const Json& json) {
  constexpr size_t kShown = 60;
  return Shortened(JsonText(json), kShown);
}

}  // namespace orvane::base
