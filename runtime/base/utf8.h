// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane::base {

// The text with U+FFFD for each byte that belongs to no character. Zero bytes stay.
std::string WellFormedUtf8(std::string_view text);

// JSON with \ufffd for each escape of half a character, such as a page's script makes.
std::string WithoutHalfCharacters(std::string_view json);

// Whether the byte continues a character that began before it.
bool IsContinuation(char c);

// The text's first bytes, at most `most` of them and no part of a character, with `ellipsis` behind
// them when something was cut.
std::string Shortened(std::string_view text, size_t most, std::string_view ellipsis = "…");

}  // namespace orvane::base
