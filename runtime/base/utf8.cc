// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/utf8.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <system_error>

#include <glib.h>

namespace orvane::base {

namespace {

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
      const std::unique_ptr<char, decltype(&g_free)> valid(g_utf8_make_valid(part.data(), length),
                                                           &g_free);
      result.append(valid.get());
    }
    if (part.size() == text.size()) return result;
    result.push_back('\0');
    text.remove_prefix(part.size() + 1);
  }
}

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

std::string Shortened(std::string_view text, size_t most) {
  if (text.size() <= most) return std::string(text);
  const auto continues = [&](size_t at) {
    return (static_cast<unsigned char>(text[at]) & 0xc0U) == 0x80;
  };
  while (most > 0 && continues(most)) --most;
  return std::string(text.substr(0, most)) + "…";
}

}  // namespace orvane::base
