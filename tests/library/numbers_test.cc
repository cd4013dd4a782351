// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/numbers.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using extension::orvane::TruncateToInt32;

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

TEST(TruncateToInt32, CutsTowardZero) {
  EXPECT_EQ(TruncateToInt32(0.0), 0);
  EXPECT_EQ(TruncateToInt32(76.9), 76);
  EXPECT_EQ(TruncateToInt32(-76.9), -76);
  EXPECT_EQ(TruncateToInt32(-0.9), 0);
  EXPECT_EQ(TruncateToInt32(5e-324), 0);
}

TEST(TruncateToInt32, KeepsTheEndsOfTheRange) {
  EXPECT_EQ(TruncateToInt32(2147483647.0), kHighest);
  EXPECT_EQ(TruncateToInt32(2147483647.9), kHighest);
  EXPECT_EQ(TruncateToInt32(2147483646.9), 2147483646);
  EXPECT_EQ(TruncateToInt32(-2147483648.0), kLowest);
  EXPECT_EQ(TruncateToInt32(-2147483648.9), kLowest);
  EXPECT_EQ(TruncateToInt32(-2147483647.9), -2147483647);
}

TEST(TruncateToInt32, ClampsWhatDoesNotFit) {
  EXPECT_EQ(TruncateToInt32(2147483648.0), kHighest);
  EXPECT_EQ(TruncateToInt32(1e300), kHighest);
  EXPECT_EQ(TruncateToInt32(HUGE_VAL), kHighest);
  EXPECT_EQ(TruncateToInt32(-1e300), kLowest);
  EXPECT_EQ(TruncateToInt32(std::nan("")), kHighest);
}

}  // namespace
}  // namespace orvane::test
