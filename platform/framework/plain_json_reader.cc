// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "plain_json_reader.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace common {

namespace {

constexpr int kMostDigits = 15;  // so many a double holds exactly

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Each function reads what begins at the position, and is false for what is unusual.
class PlainJson {
 public:
  explicit PlainJson(const char* text) : at_(text) {}

  bool ReadAll(picojson::value& value) {
    if (!ReadValue(value, 0)) {
      return false;
    }
    SkipSpace();
    return *at_ == '\0';
  }

 private:
  void SkipSpace() {
    while (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t') {
      ++at_;
    }
  }

  // The character, after blanks.
  bool Take(char wanted) {
    SkipSpace();
    if (*at_ != wanted) {
      return false;
    }
    ++at_;
    return true;
  }

  bool ReadValue(picojson::value& value, int depth) {
    SkipSpace();
    switch (*at_) {
      case '{':
        return depth < kMaxJsonDepth && ReadObject(value, depth + 1);
      case '[':
        return depth < kMaxJsonDepth && ReadArray(value, depth + 1);
      case '"':
        value = picojson::value(picojson::string_type, false);
        return ReadString(value.get<std::string>());
      case 't':
        return ReadWord("true", picojson::value(true), value);
      case 'f':
        return ReadWord("false", picojson::value(false), value);
      case 'n':
        return ReadWord("null", picojson::value(), value);
      default:
        return ReadNumber(value);
    }
  }

  bool ReadObject(picojson::value& value, int depth) {
    ++at_;
    value = picojson::value(picojson::object_type, false);
    auto& object = value.get<picojson::object>();
    if (Take('}')) {
      return true;
    }
    std::string name;
    do {
      SkipSpace();
      if (*at_ != '"' || !ReadString(name) || !Take(':') || !ReadValue(object[name], depth)) {
        return false;
      }
    } while (Take(','));
    return Take('}');
  }

  bool ReadArray(picojson::value& value, int depth) {
    ++at_;
    value = picojson::value(picojson::array_type, false);
    auto& array = value.get<picojson::array>();
    if (Take(']')) {
      return true;
    }
    do {
      array.emplace_back();
      if (!ReadValue(array.back(), depth)) {
        return false;
      }
    } while (Take(','));
    return Take(']');
  }

  bool ReadString(std::string& string) {
    const char* const begin = ++at_;
    while (*at_ != '"') {
      if (static_cast<unsigned char>(*at_) < ' ' || *at_ == '\\') {
        return false;
      }
      ++at_;
    }
    string.assign(begin, at_);
    ++at_;
    return true;
  }

  bool ReadNumber(picojson::value& value) {
    const bool is_negative = *at_ == '-';
    const char* const begin = at_ += is_negative ? 1 : 0;
    int64_t number = 0;
    while (IsDigit(*at_) && at_ - begin < kMostDigits) {
      number = number * 10 + (*at_ - '0');
      ++at_;
    }
    const bool has_leading_zero = *begin == '0' && (is_negative || at_ - begin > 1);
    if (at_ == begin || has_leading_zero || IsDigit(*at_) ||
        (*at_ != '\0' && std::strchr(".eE+-", *at_) != nullptr)) {
      return false;
    }
    value = picojson::value(static_cast<double>(is_negative ? -number : number));
    return true;
  }

  bool ReadWord(const char* word, const picojson::value& meaning, picojson::value& value) {
    const size_t length = std::strlen(word);
    if (std::strncmp(at_, word, length) != 0) {
      return false;
    }
    at_ += length;
    value = meaning;
    return true;
  }

  const char* at_;
};

}  // namespace

bool ReadPlainJson(const char* text, picojson::value& value) {
  return PlainJson(text).ReadAll(value);
}

}  // namespace common
