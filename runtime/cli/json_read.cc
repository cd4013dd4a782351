// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/json_read.h"

#include <cmath>

namespace orvane::cli {

using picojson::value;

const value& Member(const value& of, const std::string& name) {
  static const auto* const kNone = new value();
  if (!of.is<picojson::object>()) return *kNone;
  const auto found = of.get<picojson::object>().find(name);
  return found == of.get<picojson::object>().end() ? *kNone : found->second;
}

std::optional<int64_t> WholeNumber(const value& number) {
  constexpr double kLimit = 9223372036854775808.0;  // two to the power of 63
  if (!number.is<double>()) return std::nullopt;
  const auto given = number.get<double>();
  if (std::trunc(given) != given || given < -kLimit || given >= kLimit) return std::nullopt;
  return static_cast<int64_t>(given);
}

}  // namespace orvane::cli
