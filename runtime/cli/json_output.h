// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <picojson.h>

namespace orvane::cli {

// JSON as every verb prints it, on one line: members by name, "/" as it is, whole numbers with all
// their digits.
std::string JsonText(const picojson::value& json);

void PrintJson(const picojson::value& json);  // with a line's end, on the standard output

}  // namespace orvane::cli
