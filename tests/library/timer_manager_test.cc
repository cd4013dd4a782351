// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <atomic>
#include <thread>

#include "orvane/orvane_timermanager.h"
#include "set_fixture.h"
#include "system_fakes.h"

namespace orvane::test {
namespace {

using extension::orvane::TimerManager;
using std::chrono::steady_clock;
using ::testing::Contains;
using ::testing::ElementsAre;

constexpr std::chrono::seconds kPeriod(30);
constexpr char kReset[] =
    "I orvane_timermanager.cc KeepAwake: [Screensaver] screensaver_reset_timeout()";

class TimerManagerTest : public SetFixture {
 protected:
  static uint64_t Resets() { return set().screen_saver().state().resets; }

  HeldWaits waits_;
  TimerManager timer_;
};

TEST_F(TimerManagerTest, FirstResetComesOnePeriodAfterTheStart) {
  const steady_clock::time_point before = steady_clock::now();
  EXPECT_TRUE(timer_.startTimer());
  const steady_clock::time_point deadline = waits_.AwaitWait(1);

  EXPECT_GE(deadline, before + kPeriod);
  EXPECT_LE(deadline, steady_clock::now() + kPeriod);
  EXPECT_EQ(Resets(), 0U);
}

TEST_F(TimerManagerTest, ResetsAtEachDeadlineAndStartsAFreshWait) {
  timer_.startTimer();
  for (int period = 1; period <= 3; ++period) {
    waits_.AwaitWait(period);
    waits_.PassDeadline();
    const steady_clock::time_point deadline = waits_.AwaitWait(period + 1);
    EXPECT_EQ(Resets(), static_cast<uint64_t>(period));
    EXPECT_GT(deadline, steady_clock::now());
  }
}

TEST_F(TimerManagerTest, ResetsAtASpuriousWakeUpToo) {
  timer_.startTimer();
  waits_.AwaitWait(1);
  waits_.WakeSpuriously();
  waits_.AwaitWait(2);
  EXPECT_EQ(Resets(), 1U);
}

TEST_F(TimerManagerTest, GoesOnWhenAResetFails) {
  Fail("screensaver_reset_timeout");
  timer_.startTimer();
  waits_.AwaitWait(1);
  waits_.PassDeadline();
  waits_.AwaitWait(2);
  EXPECT_THAT(Messages(), Contains(kReset));
  EXPECT_TRUE(timer_.stopTimer());
}

TEST_F(TimerManagerTest, StoppingEndsTheWaitWithoutAReset) {
  timer_.startTimer();
  waits_.AwaitWait(1);
  EXPECT_TRUE(timer_.stopTimer());
  EXPECT_EQ(waits_.begun(), 1);
  EXPECT_EQ(Resets(), 0U);
}

TEST_F(TimerManagerTest, RunsAtMostOneThread) {
  EXPECT_FALSE(timer_.stopTimer());
  EXPECT_TRUE(timer_.startTimer());
  EXPECT_FALSE(timer_.startTimer());
  EXPECT_TRUE(timer_.stopTimer());
  EXPECT_FALSE(timer_.stopTimer());
}

TEST_F(TimerManagerTest, StartsAgainAfterAStop) {
  timer_.startTimer();
  waits_.AwaitWait(1);
  timer_.stopTimer();
  EXPECT_TRUE(timer_.startTimer());
  waits_.AwaitWait(2);
  waits_.PassDeadline();
  waits_.AwaitWait(3);
  EXPECT_EQ(Resets(), 1U);
}

TEST_F(TimerManagerTest, LogsEachStep) {
  timer_.startTimer();
  waits_.AwaitWait(1);
  waits_.PassDeadline();
  waits_.AwaitWait(2);
  timer_.stopTimer();
  EXPECT_THAT(
      Messages(),
      ElementsAre("I orvane_timermanager.cc startTimer: [Screensaver] Starting timer",
                  "D orvane_timermanager.cc KeepAwake: [Screensaver] Timer thread start", kReset,
                  "I orvane_timermanager.cc stopTimer: [Screensaver] Stopping timer",
                  "D orvane_timermanager.cc KeepAwake: [Screensaver] Timer thread terminate"));
}

TEST_F(TimerManagerTest, LogsNothingForARefusedStartOrStop) {
  timer_.stopTimer();
  timer_.startTimer();
  waits_.AwaitWait(1);
  ClearLog();
  timer_.startTimer();
  EXPECT_THAT(Messages(), ::testing::IsEmpty());
}

TEST_F(TimerManagerTest, DestructionStopsTheThread) {
  {
    TimerManager timer;
    timer.startTimer();
    waits_.AwaitWait(1);
    ClearLog();
  }
  EXPECT_THAT(
      Messages(),
      ElementsAre("D orvane_timermanager.cc ~TimerManager: Enter destructor",
                  "I orvane_timermanager.cc stopTimer: [Screensaver] Stopping timer",
                  "D orvane_timermanager.cc KeepAwake: [Screensaver] Timer thread terminate"));
}

// The thread has seen that it is to run on, and does not listen yet.
TEST_F(TimerManagerTest, AWakeUpLostBeforeTheWaitDelaysTheStopToTheDeadline) {
  waits_.HoldEntry();
  timer_.startTimer();
  waits_.AwaitHeldEntry();
  std::atomic<bool> stopped{false};
  std::thread stopper([this, &stopped] {
    timer_.stopTimer();
    stopped = true;
  });
  waits_.AwaitLostNotification();

  waits_.ReleaseEntry();
  waits_.AwaitWait(1);
  EXPECT_FALSE(stopped);
  waits_.PassDeadline();
  stopper.join();

  EXPECT_TRUE(stopped);
  EXPECT_EQ(waits_.begun(), 1);
  EXPECT_EQ(Resets(), 0U);
}

}  // namespace
}  // namespace orvane::test
