// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <system_error>

namespace orvane::base {

namespace {

uint8_t Byte(char c) { return static_cast<uint8_t>(c); }

void AppendEscape(char c, std::string* json) {
  static constexpr char kDigits[] = "0123456789abcdef";
  switch (c) {
    case '"':
      json->append("\\\"");
      return;
    case '\\':
      json->append("\\\\");
      return;
    case '\n':
      json->append("\\n");
      return;
    case '\r':
      json->append("\\r");
      return;
    case '\t':
      json->append("\\t");
      return;
    default:
      json->append("\\u00").push_back(kDigits[Byte(c) >> 4U]);
      json->push_back(kDigits[Byte(c) & 15U]);
  }
}

// What the first byte of a sequence of two to four says of the others.
struct Sequence {
  size_t length = 0;       // 0: the byte begins none
  uint8_t lowest = 0x80;   // of the second byte: leaves out long forms, surrogates and what is
  uint8_t highest = 0xbf;  // above the last character
};

Sequence SequenceOf(uint8_t first) {
  if (first >= 0xc2 && first <= 0xdf) return {2};
  if (first == 0xe0) return {3, 0xa0, 0xbf};
  if (first == 0xed) return {3, 0x80, 0x9f};
  if (first >= 0xe1 && first <= 0xef) return {3};
  if (first == 0xf0) return {4, 0x90, 0xbf};
  if (first == 0xf4) return {4, 0x80, 0x8f};
  if (first >= 0xf1 && first <= 0xf3) return {4};
  return {};
}

// Bytes of the character that the text begins with; 0 when it begins with none.
size_t CharacterLength(std::string_view text) {
  if (Byte(text[0]) < 0x80) return 1;
  const Sequence sequence = SequenceOf(Byte(text[0]));
  if (sequence.length == 0 || text.size() < sequence.length) return 0;
  if (Byte(text[1]) < sequence.lowest || Byte(text[1]) > sequence.highest) return 0;
  for (size_t i = 2; i < sequence.length; ++i) {
    if ((Byte(text[i]) & 0xc0U) != 0x80) return 0;
  }
  return sequence.length;
}

// Bytes at the beginning that are well formed.
size_t WellFormedLength(std::string_view text) {
  size_t at = 0;
  while (at < text.size()) {
    uint64_t eight = 0;
    if (text.size() - at >= sizeof(eight)) {
      std::memcpy(&eight, text.data() + at, sizeof(eight));
      if ((eight & 0x8080808080808080U) == 0) {
        at += sizeof(eight);
        continue;
      }
    }
    const size_t length = CharacterLength(text.substr(at));
    if (length == 0) return at;
    at += length;
  }
  return at;
}

constexpr size_t kEscapeBytes = 6;  // of "\\u0000"

// The code unit that the text begins with as an escape; nothing when it begins otherwise.
std::optional<uint32_t> EscapedUnit(std::string_view text) {
  if (text.size() < kEscapeBytes || text.substr(0, 2) != "\\u") return std::nullopt;
  uint32_t unit = 0;
  const char* const end = text.data() + kEscapeBytes;
  const auto [stopped, error] = std::from_chars(text.data() + 2, end, unit, 16);
  if (error != std::errc() || stopped != end) return std::nullopt;
  return unit;
}

bool IsHighHalf(std::optional<uint32_t> unit) { return unit >= 0xd800U && unit <= 0xdbffU; }
bool IsLowHalf(std::optional<uint32_t> unit) { return unit >= 0xdc00U && unit <= 0xdfffU; }

// Bytes of the escape, or of the two that are one character, that the text begins with.
size_t EscapeLength(std::string_view text) {
  const std::optional<uint32_t> unit = EscapedUnit(text);
  if (!unit) return 2;
  const bool pair = IsHighHalf(unit) && IsLowHalf(EscapedUnit(text.substr(kEscapeBytes)));
  return pair ? 2 * kEscapeBytes : kEscapeBytes;
}

}  // namespace

std::string WithoutHalfCharacters(std::string_view json) {
  std::string result;
  result.reserve(json.size());
  while (!json.empty()) {
    const size_t plain = std::min(json.find('\\'), json.size());
    result.append(json.substr(0, plain));
    json.remove_prefix(plain);
    if (json.empty()) break;
    const std::string_view escape = json.substr(0, EscapeLength(json));
    const std::optional<uint32_t> unit = EscapedUnit(escape);
    const bool half = escape.size() == kEscapeBytes && (IsHighHalf(unit) || IsLowHalf(unit));
    result.append(half ? "\\ufffd" : escape);
    json.remove_prefix(escape.size());
  }
  return result;
}

void AppendJsonString(std::string_view text, std::string* json) {
  json->reserve(json->size() + text.size() + 2);
  json->push_back('"');
  size_t plain = 0;  // where what was not copied yet begins
  for (size_t i = 0; i < text.size(); ++i) {
    if (Byte(text[i]) >= 0x20 && text[i] != '"' && text[i] != '\\') continue;
    json->append(text, plain, i - plain);
    AppendEscape(text[i], json);
    plain = i + 1;
  }
  json->append(text, plain, text.size() - plain);
  json->push_back('"');
}

bool IsWellFormed(std::string_view text) { return WellFormedLength(text) == text.size(); }

std::string WellFormed(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (true) {
    const size_t length = WellFormedLength(text);
    result.append(text, 0, length);
    if (length == text.size()) return result;
    result.append("\xef\xbf\xbd");
    text.remove_prefix(length + 1);
  }
}

}  // namespace orvane::base
