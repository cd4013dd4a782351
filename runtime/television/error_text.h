// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::television {

// An error's text as it is told: one line of bounded length, whatever of a request it quotes. A
// long one loses its middle, since its remedy is at its end.
std::string ErrorText(std::string_view text);

}  // namespace orvane::television
