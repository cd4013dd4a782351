// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <picojson.h>

namespace orvane::extensions {

// The value of a whole JSON text that nests at most 32 deep (the parser recurses, and its own bound
// leaves objects out). Nothing otherwise, with the reason in `error`; numbers beyond a double's
// range count as such a reason.
std::optional<picojson::value> ParseBoundedJson(std::string_view json, std::string* error);

}  // namespace orvane::extensions
