// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments.h"

#include <algorithm>

namespace orvane::cli {

namespace {

// The parser takes "[a,b]" apart and "-1" for an option.
bool NeedsBlank(const std::string& argument) {
  if (argument.empty()) return false;
  const bool negative =
      argument.size() > 1 && argument[0] == '-' && argument[1] >= '0' && argument[1] <= '9';
  return negative || argument[0] == '[';
}

}  // namespace

std::vector<std::string> ParserOrder(std::vector<std::string> arguments) {
  const bool takes_json = !arguments.empty() && arguments.front() == "call";
  const bool takes_code = !arguments.empty() && arguments.front() == "fail";
  if (takes_json || takes_code) {
    for (std::string& argument : arguments) {
      if (NeedsBlank(argument)) argument.insert(0, 1, ' ');
    }
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

}  // namespace orvane::cli
