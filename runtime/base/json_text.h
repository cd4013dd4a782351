// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::base {

// Appends `text` as a JSON string with its quotes. Control characters are escaped, "/" is not, and
// bytes above 0x7f stay as they are.
void AppendJsonString(std::string_view text, std::string* json);

// Whether every byte belongs to a character of well-formed UTF-8.
bool IsWellFormed(std::string_view text);

// The text with U+FFFD for each byte that belongs to none: what the set logs and stores may be any
// bytes, what a browser receives may not.
std::string WellFormed(std::string_view text);

// The JSON text with \ufffd for each escape of half a character (a surrogate without its partner):
// a page's strings may hold such halves and JSON.stringify writes them, but parsers refuse them.
std::string WithoutHalfCharacters(std::string_view json);

}  // namespace orvane::base
