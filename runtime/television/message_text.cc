// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/message_text.h"

#include <charconv>

#include <picojson.h>

namespace orvane::television {

namespace {

constexpr double kUnknownErrorCode = 9999;

// Whether the byte continues a UTF-8 sequence that began before it.
bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

}  // namespace

std::optional<int> ReadInteger(std::string_view text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stopped != end) return std::nullopt;
  return value;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::string Quoted(std::string_view text) {
  constexpr size_t kLongestShown = 80;
  size_t length = text.size();
  if (length > kLongestShown) {
    length = kLongestShown;
    while (length > 0 && IsContinuation(text[length])) --length;
  }
  std::string quoted = "\"";
  for (const char c : text.substr(0, length)) {
    const auto byte = static_cast<unsigned char>(c);
    quoted += byte < 0x20 || byte == 0x7f ? '?' : c;
  }
  return quoted + (length < text.size() ? "…\"" : "\"");
}

std::string SuccessReply() { return R"({"status":"success"})"; }

std::string ErrorReply(const std::string& message) {
  picojson::object error;
  error["code"] = picojson::value(kUnknownErrorCode);
  error["name"] = picojson::value("UnknownError");
  error["message"] = picojson::value(message);
  picojson::object reply;
  reply["status"] = picojson::value("error");
  reply["error"] = picojson::value(error);
  return picojson::value(reply).serialize();
}

}  // namespace orvane::television
