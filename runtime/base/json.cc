// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json.h"

#include <algorithm>

#include "base/utf8.h"

namespace orvane::base {

namespace {

// Brackets in texts do not count. Of what is no JSON it may count too many or too few.
int DepthOf(std::string_view text) {
  int depth = 0;
  int deepest = 0;
  bool in_string = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') in_string = !in_string;
    if (in_string) {
      if (c == '\\') ++i;
    } else if (c == '{' || c == '[') {
      deepest = std::max(deepest, ++depth);
    } else if (c == '}' || c == ']') {
      --depth;
    }
  }
  return deepest;
}

bool IsPrintableAscii(char c) { return c >= ' ' && c <= '~'; }

}  // namespace

Json ParseJson(std::string_view text, int max_depth) {
  if (DepthOf(text) > max_depth) {
    throw JsonError("The JSON nests deeper than " + std::to_string(max_depth) + " levels.");
  }
  try {
    return Json::parse(text);
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

void AppendJson(const Json& json, std::string* text) {
  if (json.is_string()) return AppendJsonString(json.get_ref<const std::string&>(), text);
  text->append(JsonText(json));
}

void AppendJsonString(std::string_view value, std::string* text) {
  if (!std::all_of(value.begin(), value.end(), IsPrintableAscii)) {
    text->append(JsonText(Json(value)));
    return;
  }
  text->push_back('"');
  for (size_t end = 0; (end = value.find_first_of("\"\\")) != std::string_view::npos;) {
    text->append(value.substr(0, end)).append({'\\', value[end]});
    value.remove_prefix(end + 1);
  }
  text->append(value).push_back('"');
}

std::string Excerpt(const Json& json) {
  constexpr size_t kShown = 60;
  return Shortened(JsonText(json), kShown);
}

}  // namespace orvane::base
