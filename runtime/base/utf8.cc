// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/utf8.h"

#include <memory>

#include <glib.h>

namespace orvane::base {

namespace {

using Text = std::unique_ptr<char, decltype(&g_free)>;

}  // namespace

std::string WellFormedUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (true) {
    // GLib takes a zero byte for the end.
    const std::string_view part = text.substr(0, text.find('\0'));
    const auto length = static_cast<gssize>(part.size());
    if (g_utf8_validate(part.data(), length, nullptr) != FALSE) {
      result.append(part);
    } else {
      const Text valid(g_utf8_make_valid(part.data(), length), &g_free);
      result.append(valid.get());
    }
    if (part.size() == text.size()) return result;
    result.push_back('\0');
    text.remove_prefix(part.size() + 1);
  }
}

std::string WithoutHalfCharacters(std::string_view json) {
  // What is whole is passed over: other escapes, and the two halves of a character together.
  static GRegex* const half = g_regex_new(
      R"((?:\\[^u]|\\u[dD][89abAB][[:xdigit:]]{2}\\u[dD][c-fC-F][[:xdigit:]]{2})(*SKIP)(*FAIL))"
      R"(|\\u[dD][89a-fA-F][[:xdigit:]]{2})",
      static_cast<GRegexCompileFlags>(G_REGEX_RAW | G_REGEX_OPTIMIZE), G_REGEX_MATCH_DEFAULT,
      nullptr);
  // Beyond a zero byte, which stands in no JSON, nothing is replaced.
  const std::string_view part = json.substr(0, json.find('\0'));
  const Text replaced(g_regex_replace_literal(half, part.data(), static_cast<gssize>(part.size()),
                                              0, "\\ufffd", G_REGEX_MATCH_DEFAULT, nullptr),
                      &g_free);
  if (!replaced) return std::string(json);
  return replaced.get() + std::string(json.substr(part.size()));
}

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xc0U) == 0x80; }

std::string Shortened(std::string_view text, size_t most, std::string_view ellipsis) {
  if (text.size() <= most) return std::string(text);
  while (most > 0 && IsContinuation(text[most])) --most;
  return std::string(text.substr(0, most)).append(ellipsis);
}

}  // namespace orvane::base
