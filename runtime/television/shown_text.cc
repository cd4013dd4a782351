// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/shown_text.h"

#include <algorithm>

#include "base/utf8.h"

namespace orvane::television {

namespace {

std::string_view End(std::string_view text, size_t most) {
  size_t begin = text.size() - std::min(most, text.size());
  while (begin > 0 && begin < text.size() && base::IsContinuation(text[begin])) ++begin;
  return text.substr(begin);
}

std::string WithoutControls(std::string text) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
  std::replace_if(text.begin(), text.end(), is_control, '?');
  return text;
}

}  // namespace

std::string Quoted(std::string_view text) {
  return "\"" + WithoutControls(base::Shortened(text, 80)) + "\"";
}

std::string ErrorText(std::string_view text) {
  constexpr size_t kBeginning = 700;  // bytes of a long text
  constexpr size_t kEnd = 600;
  if (text.size() <= kBeginning + kEnd) return WithoutControls(std::string(text));
  return WithoutControls(base::Shortened(text, kBeginning, " … ").append(End(text, kEnd)));
}

}  // namespace orvane::television
