// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "json_reader.h"

#include <cstring>
#include <exception>

#include "plain_json_reader.h"

namespace common {

namespace {

// The JSON library counts no objects, and it calls itself for each level, so that a text could end
// the stack.
bool IsTooDeep(const char* text) {
  int depth = 0;
  bool in_string = false;
  for (; *text != '\0'; ++text) {
    if (in_string && *text == '\\' && text[1] != '\0') {
      ++text;
    } else if (*text == '"') {
      in_string = !in_string;
    } else if (!in_string && (*text == '{' || *text == '[') && ++depth > kMaxJsonDepth) {
      return true;
    } else if (!in_string && (*text == '}' || *text == ']')) {
      --depth;
    }
  }
  return false;
}

bool IsJsonSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// What is wrong, as the end of a sentence.
std::string Problem(const char* text, picojson::value& value) {
  if (ReadPlainJson(text, value)) {
    return {};
  }
  if (IsTooDeep(text)) {
    return " is nested too deeply";
  }
  const char* const end = text + std::strlen(text);
  std::string problem;
  try {
    const char* rest = picojson::parse(value, text, end, &problem);
    if (!problem.empty()) {
      return " is no JSON: " + problem;
    }
    while (rest != end && IsJsonSpace(*rest)) {
      ++rest;
    }
    return rest == end ? std::string() : std::string(" has text behind its JSON: ") + rest;
  } catch (const std::exception& error) {
    // A number that no double holds ends the parser this way.
    return std::string(" holds a value out of range: ") + error.what();
  }
}

}  // namespace

std::string ReadJson(const char* text, const char* subject, picojson::value& value) {
  const std::string problem = Problem(text, value);
  return problem.empty() ? problem : std::string("The ") + subject + problem;
}

}  // namespace common
