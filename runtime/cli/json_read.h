// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <picojson.h>

namespace orvane::cli {

// For JSON that another program, or another version of this one, has written.

// A member; null for one that is not there, or of what is no object.
const picojson::value& Member(const picojson::value& of, const std::string& name);

// Empty for what is no whole number of 64 bits. What a double cannot hold exactly is rounded.
std::optional<int64_t> WholeNumber(const picojson::value& number);

}  // namespace orvane::cli
