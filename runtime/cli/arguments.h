// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace orvane::cli {

// The command line's arguments (without the command's name) as the parser wants them: last first,
// and those of "call" and "fail" that it would read as something else than a value (a list, a
// negative number) with a blank before them, which JSON and numbers allow.
std::vector<std::string> ParserOrder(std::vector<std::string> arguments);

}  // namespace orvane::cli
