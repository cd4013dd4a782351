// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::extensions {

// `text` as a JSON string with its quotes. Bytes above 0x7f stay as they are; "/" is not escaped.
std::string JsonString(std::string_view text);

// The beginning of a message, for people: at most 200 bytes, cut between UTF-8 characters, with "…"
// when something was cut.
std::string Excerpt(std::string_view text);

}  // namespace orvane::extensions
