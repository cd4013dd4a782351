// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace extension::orvane {

// The whole part of a number, cut toward zero as the script's numbers are wherever they stand for a
// code, a state or a row. Every double has an answer: one beyond 32 bits becomes the nearest that
// fits, and what is no number the highest.
inline int32_t TruncateToInt32(double number) {
  constexpr double kLowest = std::numeric_limits<int32_t>::min();
  constexpr double kHighest = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::fmax(kLowest, std::fmin(number, kHighest)));
}

}  // namespace extension::orvane
