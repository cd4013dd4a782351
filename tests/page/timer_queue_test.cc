// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/timer_queue.h"

#include <memory>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::page {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using Repeat = TimerQueue::Repeat;

class TimerQueueTest : public testing::Test {
 protected:
  int32_t Add(int delay, Repeat repeat = Repeat::kOnce) {
    const auto number = std::make_shared<int32_t>();
    *number =
        queue_.Add(milliseconds(delay), repeat, now_, [this, number] { ran_.push_back(*number); });
    return *number;
  }

  // The timers of one turn, in the order in which they run.
  std::vector<int32_t> Turn() {
    ran_.clear();
    queue_.BeginTurn(now_);
    while (const TimerQueue::Handler handler = queue_.TakeDue(now_)) {
      handler();
      queue_.EndTimer();
    }
    return ran_;
  }

  TimerQueue queue_;
  std::vector<int32_t> ran_;
  Clock::TimePoint now_{std::chrono::hours(1)};
};

TEST_F(TimerQueueTest, RunsTimersInTheOrderTheyAreDue) {
  const int32_t late = Add(20);
  const int32_t early = Add(10);
  now_ += milliseconds(30);
  EXPECT_THAT(Turn(), ElementsAre(early, late));
}

TEST_F(TimerQueueTest, RunsTimersDueTogetherInTheOrderTheyWereSet) {
  const int32_t first = Add(10);
  const int32_t second = Add(10);
  now_ += milliseconds(10);
  EXPECT_THAT(Turn(), ElementsAre(first, second));
}

TEST_F(TimerQueueTest, LeavesWhatIsNotDue) {
  Add(10);
  now_ += milliseconds(9);
  EXPECT_THAT(Turn(), IsEmpty());
  EXPECT_FALSE(queue_.empty());
}

TEST_F(TimerQueueTest, TakesNegativeDelaysAsNone) {
  const int32_t timer = Add(-5);
  EXPECT_THAT(Turn(), ElementsAre(timer));
}

TEST_F(TimerQueueTest, LeavesTimersSetDuringATurnToTheNext) {
  Add(0);
  queue_.BeginTurn(now_);
  ASSERT_TRUE(queue_.TakeDue(now_));
  const int32_t second = Add(0);
  EXPECT_FALSE(queue_.TakeDue(now_));
  queue_.EndTimer();
  EXPECT_THAT(Turn(), ElementsAre(second));
}

TEST_F(TimerQueueTest, DropsATimerThatIsRemovedInTheSameTurn) {
  Add(0);
  const int32_t second = Add(0);
  queue_.BeginTurn(now_);
  queue_.TakeDue(now_);
  queue_.Remove(second);
  EXPECT_FALSE(queue_.TakeDue(now_));
  EXPECT_TRUE(queue_.empty());
}

TEST_F(TimerQueueTest, RunsAnIntervalAgainAfterItsInterval) {
  const int32_t timer = Add(10, Repeat::kInterval);
  now_ += milliseconds(10);
  EXPECT_THAT(Turn(), ElementsAre(timer));
  EXPECT_THAT(Turn(), IsEmpty());
  EXPECT_EQ(queue_.NextDue(), now_ + milliseconds(10));
}

TEST_F(TimerQueueTest, RunsAnIntervalOnceForATimeThatWasMissed) {
  const int32_t timer = Add(10, Repeat::kInterval);
  now_ += milliseconds(1000);
  EXPECT_THAT(Turn(), ElementsAre(timer));
}

TEST_F(TimerQueueTest, SlowsTimersThatSetEachOtherFromTheSixthLevelOn) {
  std::vector<Clock::TimePoint> due;
  Add(0);
  for (int level = 1; level <= 7; ++level) {
    now_ = *queue_.NextDue();
    due.push_back(now_);
    queue_.BeginTurn(now_);
    queue_.TakeDue(now_);
    Add(0);
    queue_.EndTimer();
  }
  EXPECT_EQ(due[4], due[0]);
  EXPECT_EQ(due[5] - due[4], milliseconds(4));
  EXPECT_EQ(due[6] - due[5], milliseconds(4));
}

TEST_F(TimerQueueTest, SlowsAnIntervalOfZero) {
  Add(0, Repeat::kInterval);
  for (int run = 0; run < 5; ++run) Turn();
  EXPECT_EQ(queue_.NextDue(), now_ + milliseconds(4));
}

TEST_F(TimerQueueTest, IgnoresNumbersThatAreNotInUse) {
  const int32_t timer = Add(0);
  queue_.Remove(timer + 1);
  queue_.Remove(-1);
  EXPECT_THAT(Turn(), ElementsAre(timer));
}

TEST_F(TimerQueueTest, IsEmptyAfterClear) {
  Add(0);
  Add(5, Repeat::kInterval);
  queue_.Clear();
  EXPECT_TRUE(queue_.empty());
  EXPECT_THAT(Turn(), IsEmpty());
}

}  // namespace
}  // namespace orvane::page
