// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::television {

// Readers of the texts that pages send. They take anything, and answer only what is wholly right.

// The longest text that a runtime message may have, in bytes.
inline constexpr size_t kMaxMessageBytes = 64 * 1024;

// A decimal number within int's range, with nothing before or after it.
std::optional<int> ReadInteger(std::string_view text);

// The parts between the separators: at least one, empty ones included.
std::vector<std::string_view> Split(std::string_view text, char separator);

// {"status":"success"}, and the error form that extensions answer with (code 9999, UnknownError).
std::string SuccessReply();
std::string ErrorReply(const std::string& message);

}  // namespace orvane::television
