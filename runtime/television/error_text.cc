// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/error_text.h"

#include <algorithm>

namespace orvane::television {

namespace {

constexpr size_t kBeginning = 700;  // bytes of a long text
constexpr size_t kEnd = 600;

// Whether the byte continues a UTF-8 sequence that began before it.
bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

std::string WithoutMiddle(std::string_view text) {
  if (text.size() <= kBeginning + kEnd) return std::string(text);
  size_t begin = kBeginning;
  while (begin > 0 && IsContinuation(text[begin])) --begin;
  size_t end = text.size() - kEnd;
  while (end < text.size() && IsContinuation(text[end])) ++end;
  return std::string(text.substr(0, begin)).append(" … ").append(text.substr(end));
}

}  // namespace

std::string ErrorText(std::string_view text) {
  std::string line = WithoutMiddle(text);
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
  std::replace_if(line.begin(), line.end(), is_control, '?');
  return line;
}

}  // namespace orvane::television
