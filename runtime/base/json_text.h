// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "base/utf8.h"

namespace orvane::base {

// Appends `text` as a JSON string with its quotes. Control characters are escaped, "/" is not, and
// bytes above 0x7f stay as they are.
void AppendJsonString(std::string_view text, std::string* json);

// Whether every byte belongs to a character of well-formed UTF-8.
bool IsWellFormed(std::string_view text);

// The text with U+FFFD for each byte that belongs to none: what the set logs and stores may be any
// bytes, what a browser receives may not.
std::string WellFormed(std::string_view text);

}  // namespace orvane::base
