// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/shifted_clock.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::television {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

class ShiftedClockTest : public testing::Test {
 protected:
  void SetAlarm(int number, seconds from_now) {
    clock_->SetAlarm(clock_->Now() + from_now, [this, number] { rung_.push_back(number); });
  }
  tvset::ManualClock& base() { return *base_; }
  ShiftedClock& clock() { return *clock_; }
  void DropClock() { clock_.reset(); }
  const std::vector<int>& rung() const { return rung_; }

 private:
  const std::shared_ptr<tvset::ManualClock> base_ = std::make_shared<tvset::ManualClock>();
  std::shared_ptr<ShiftedClock> clock_ = ShiftedClock::Create(base_);
  std::vector<int> rung_;
};

TEST_F(ShiftedClockTest, RunsAsItsBase) {
  const auto before = clock().Now();
  base().Advance(seconds(5));
  EXPECT_EQ(clock().Now() - before, seconds(5));
}

TEST_F(ShiftedClockTest, RingsWithItsBase) {
  SetAlarm(2, seconds(20));
  SetAlarm(1, seconds(10));
  base().Advance(seconds(9));
  EXPECT_THAT(rung(), IsEmpty());
  base().Advance(seconds(1));
  EXPECT_THAT(rung(), ElementsAre(1));
  base().Advance(seconds(10));
  EXPECT_THAT(rung(), ElementsAre(1, 2));
}

TEST_F(ShiftedClockTest, RingsWhatIsDueWhenItIsMovedOnceOnly) {
  SetAlarm(2, seconds(20));
  SetAlarm(1, seconds(10));
  SetAlarm(3, seconds(30));
  clock().Advance(seconds(25));
  EXPECT_THAT(rung(), ElementsAre(1, 2));
  base().Advance(seconds(4));
  EXPECT_THAT(rung(), ElementsAre(1, 2));
  base().Advance(seconds(1));
  EXPECT_THAT(rung(), ElementsAre(1, 2, 3));
  base().Advance(seconds(60));
  EXPECT_EQ(rung().size(), 3U);
}

TEST_F(ShiftedClockTest, NeverGoesBack) {
  const auto before = clock().Now();
  clock().Advance(seconds(-5));
  EXPECT_EQ(clock().Now(), before);
  EXPECT_EQ(clock().shift(), seconds(0));
}

TEST_F(ShiftedClockTest, MayBeGoneWhenItsBaseRings) {
  SetAlarm(1, seconds(10));
  DropClock();
  base().Advance(seconds(20));
  EXPECT_THAT(rung(), IsEmpty());
}

}  // namespace
}  // namespace orvane::television
