// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <picojson.h>

namespace common {

// The object's text, the same bytes that the JSON library writes. It appends whole texts where the
// library appends characters, and leaves to it the values that a reply seldom has. Any thread.
std::string WriteJson(const picojson::object& object);

}  // namespace common
