// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::television {

// What others wrote, as it is shown to people: of bounded length and without control characters,
// fit for a terminal.

// A word of a message, in quotes; 80 bytes of it at most.
std::string Quoted(std::string_view text);

// An error's text as one line, whatever of a request it quotes. Of one above 1300 bytes the middle
// is lost, since its remedy is at its end. Used where an error leaves the process.
std::string ErrorText(std::string_view text);

}  // namespace orvane::television
