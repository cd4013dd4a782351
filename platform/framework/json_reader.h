// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <picojson.h>

namespace common {

// Reads foreign text as one JSON value with nothing but blanks behind it. Returns what is wrong
// with the text, for a person, beginning "The " + `subject`; empty: nothing. The stack that it
// needs is bounded whatever the text holds: 100 levels of arrays and objects and no more are read,
// and a number that no double holds is refused. Any thread. `value` counts on success only.
std::string ReadJson(const char* text, const char* subject, picojson::value& value);

}  // namespace common
