// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/message_text.h"

#include <charconv>

#include "base/json.h"

namespace orvane::television {

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

std::string SuccessReply() { return R"({"status":"success"})"; }

std::string ErrorReply(const std::string& message) {
  return base::JsonText(
      {{"status", "error"},
       {"error", {{"code", 9999}, {"name", "UnknownError"}, {"message", message}}}});
}

}  // namespace orvane::television
