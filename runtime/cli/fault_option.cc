// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/fault_option.h"

#include <charconv>

#include "cli/exit_code.h"

namespace orvane::cli {

tvset::Fault ParseFault(const std::string& text) {
  const UsageError malformed("--fail " + text +
                             ": write FUNCTION=CODE, or FUNCTION=CODE:once to fail the next call "
                             "only, such as --fail vconf_set_str=-1:once.");
  const size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) throw malformed;
  tvset::Fault fault;
  fault.function = text.substr(0, equals);
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data() + equals + 1, end, fault.code);
  if (error != std::errc()) throw malformed;
  const std::string rest(stopped, end);
  if (!rest.empty() && rest != ":once") throw malformed;
  fault.mode = rest.empty() ? tvset::FaultMode::kAlways : tvset::FaultMode::kOnce;
  return fault;
}

}  // namespace orvane::cli
