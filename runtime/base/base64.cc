// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/base64.h"

#include <cstdint>

namespace orvane::base {

namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string EncodeBase64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t at = 0; at < bytes.size(); at += 3) {
    const std::string_view three = bytes.substr(at, 3);
    uint32_t bits = 0;
    for (size_t i = 0; i < 3; ++i) {
      bits = bits << 8U | (i < three.size() ? static_cast<unsigned char>(three[i]) : 0U);
    }
    for (size_t i = 0; i < 4; ++i) {
      text.push_back(i <= three.size() ? kAlphabet[bits >> (18 - 6 * i) & 63U] : '=');
    }
  }
  return text;
}

std::optional<std::string> DecodeBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  for (int padding = 0; padding < 2 && !text.empty() && text.back() == '='; ++padding) {
    text.remove_suffix(1);
  }
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3 + 2);
  uint32_t bits = 0;
  unsigned count = 0;  // bits that are held
  for (const char letter : text) {
    const size_t digit = kAlphabet.find(letter);
    if (digit == std::string_view::npos) return std::nullopt;
    bits = bits << 6U | static_cast<uint32_t>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes.push_back(static_cast<char>(bits >> count & 0xffU));
  }
  return bytes;
}

}  // namespace orvane::base
