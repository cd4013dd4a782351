// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/text.h"

namespace orvane::extensions {
namespace {

constexpr size_t kExcerptBytes = 200;

void AppendControlCharacter(unsigned char character, std::string* out) {
  constexpr char kHex[] = "0123456789abcdef";
  *out += "\\u00";
  *out += kHex[character >> 4];
  *out += kHex[character & 0xf];
}

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; }

}  // namespace

std::string JsonString(std::string_view text) {
  std::string out = "\"";
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20) {
      AppendControlCharacter(byte, &out);
      continue;
    }
    if (character == '"' || character == '\\') out += '\\';
    out += character;
  }
  out += '"';
  return out;
}

std::string Excerpt(std::string_view text) {
  if (text.size() <= kExcerptBytes) return std::string(text);
  size_t end = kExcerptBytes;
  while (end > 0 && IsContinuation(text[end])) --end;
  return std::string(text.substr(0, end)) + "…";
}

}  // namespace orvane::extensions
