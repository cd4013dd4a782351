// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_text.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

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

}  // namespace

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
