// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/shown_text.h"

#include <algorithm>

namespace orvane::television {

namespace {

// Whether the byte continues a UTF-8 sequence that began before it.
bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

// At most `most` bytes from the beginning, and none of a character that does not fit.
std::string_view Beginning(std::string_view text, size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && IsContinuation(text[most])) --most;
  return text.substr(0, most);
}

std::string_view End(std::string_view text, size_t most) {
  size_t begin = text.size() - std::min(most, text.size());
  while (begin > 0 && begin < text.size() && IsContinuation(text[begin])) ++begin;
  return text.substr(begin);
}

std::string WithoutControls(std::string text) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
  std::replace_if(text.begin(), text.end(), is_control, '?');
  return text;
}

}  // namespace

std::string Quoted(std::string_view text) {
  const std::string_view shown = Beginning(text, 80);
  const char* const end = shown.size() < text.size() ? "…\"" : "\"";
  return WithoutControls("\"" + std::string(shown)) + end;
}

std::string ErrorText(std::string_view text) {
  constexpr size_t kBeginning = 700;  // bytes of a long text
  constexpr size_t kEnd = 600;
  if (text.size() <= kBeginning + kEnd) return WithoutControls(std::string(text));
  return WithoutControls(
      std::string(Beginning(text, kBeginning)).append(" … ").append(End(text, kEnd)));
}

}  // namespace orvane::television
