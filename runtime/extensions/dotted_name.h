// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace orvane::extensions {

// Whether `name` is one or more ASCII identifiers joined by dots, as "dravelt.orvane". An
// identifier begins with a letter, "_" or "$", digits may follow.
bool IsDottedName(std::string_view name);

}  // namespace orvane::extensions
