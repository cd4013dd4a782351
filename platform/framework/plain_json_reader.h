// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <picojson.h>

namespace common {

// Arrays and objects nest no deeper in what is read.
inline constexpr int kMaxJsonDepth = 100;

// Reads a text as the JSON library does, when nothing in it is unusual: no escape, no number but a
// short whole one, no mistake. False: there is, `value` means nothing, and the library says what
// the text holds. One pass, with a bound on its depth. Any thread.
bool ReadPlainJson(const char* text, picojson::value& value);

}  // namespace common
