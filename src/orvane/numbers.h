// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>

namespace extension::orvane {

// The integer part of a JSON number. Numbers beyond 32 bits become the nearest one that fits;
// `number` is never NaN, since no JSON number is.
inline int32_t TruncateToInt32(double number) {
  constexpr double kLowest = std::numeric_limits<int32_t>::min();
  constexpr double kHighest = std::numeric_limits<int32_t>::max();
  if (number <= kLowest) {
    return std::numeric_limits<int32_t>::min();
  }
  if (number >= kHighest) {
    return std::numeric_limits<int32_t>::max();
  }
  return number == number ? static_cast<int32_t>(number) : 0;
}

}  // namespace extension::orvane
