// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::television {

// What others wrote, as it is shown to people: of bounded length and without control characters,
// fit for a terminal.

// A word of a message, in quotes.
std::string Quoted(std::string_view text);

// An error's text as one line, whatever of a request it quotes. A long one loses its middle, since
// its remedy is at its end.
std::string ErrorText(std::string_view text);

}  // namespace orvane::television
