// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "library_fixture.h"

namespace orvane::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

constexpr char kSuccess[] = R"({"callbackId":1,"result":{},"status":"success"})";
const std::string kTask = " orvane_manager.cc operator(): ";
const std::string kFinalised = "D" + kTask + "Finalizing SetScreenSaver task with callback id=1";
const std::string kTimer = " orvane_timermanager.cc ";

class ScreenSaverTest : public LibraryFixture {
 protected:
  ~ScreenSaverTest() override { CloseInstance(); }

  // Returns the reply, once the task is finalised.
  std::string Set(const std::string& state) {
    Start("setScreenSaver", R"({"callbackId":1,"state":)" + state + "}");
    const std::string reply = AwaitReply();
    AwaitIdleWorker();
    return reply;
  }
  static uint64_t Resets() { return set().screen_saver().state().resets; }

  HeldWaits waits_;
};

TEST_F(ScreenSaverTest, SwitchingOffStartsTheTimer) {
  EXPECT_EQ(Set("0"), kSuccess);
  waits_.AwaitWait(1);
  EXPECT_EQ(Resets(), 0U);
  waits_.PassDeadline();
  waits_.AwaitWait(2);
  EXPECT_EQ(Resets(), 1U);
  EXPECT_THAT(Messages(), AllOf(Contains("I" + kTimer + "startTimer: [Screensaver] Starting timer"),
                                Contains("I" + kTask + "Success to deactivate screensaver"),
                                Contains(kFinalised)));
}

TEST_F(ScreenSaverTest, SwitchingOffTwiceKeepsOneTimer) {
  Set("0");
  waits_.AwaitWait(1);
  ClearLog();
  EXPECT_EQ(Set("0"), kSuccess);
  EXPECT_EQ(waits_.begun(), 1);
  EXPECT_THAT(
      Messages(),
      ElementsAre("E" + kTask + "Failed to start timer. Timer is already running.", kFinalised));
}

TEST_F(ScreenSaverTest, SwitchingOnStopsTheTimer) {
  Set("0");
  waits_.AwaitWait(1);
  set().screen_saver().SetAppId("somebody");
  ClearLog();
  EXPECT_EQ(Set("1"), kSuccess);
  EXPECT_EQ(set().screen_saver().state().app_id, "DEFAULT");
  EXPECT_THAT(
      Messages(),
      ElementsAre("I" + kTask + "Success to activate screensaver",
                  "I" + kTimer + "stopTimer: [Screensaver] Stopping timer",
                  "D" + kTimer + "KeepAwake: [Screensaver] Timer thread terminate", kFinalised));
}

TEST_F(ScreenSaverTest, SwitchingOnWithoutATimerSucceeds) {
  EXPECT_EQ(Set("1"), kSuccess);
  EXPECT_THAT(Messages(),
              ElementsAre("I" + kTask + "Success to activate screensaver",
                          "E" + kTask + "Failed to stop timer. Timer is not running.", kFinalised));
}

TEST_F(ScreenSaverTest, StatesAreCutToIntegers) {
  for (const char* state : {"0.9", "-0.9", "0.0"}) {
    ClearLog();
    Set(state);
    EXPECT_THAT(Messages(), Not(Contains("I" + kTask + "Success to activate screensaver")))
        << state;
  }
  for (const char* state : {"1", "-1", "2", "1.5", "1e300", "-1e300", "4294967296"}) {
    ClearLog();
    Set(state);
    EXPECT_THAT(Messages(), Contains("I" + kTask + "Success to activate screensaver")) << state;
  }
}

TEST_F(ScreenSaverTest, SwitchingOnFallsBackToTheTimeout) {
  set().screen_saver().SetTimeout(300);
  Fail("screensaver_set_appid");
  EXPECT_EQ(Set("1"), kSuccess);
  EXPECT_EQ(set().screen_saver().state().timeout_seconds, 0);
  EXPECT_THAT(Messages(), Contains("I" + kTask + "Success to activate screensaver"));
}

TEST_F(ScreenSaverTest, SwitchingOnLeavesTheTimeoutWhenItNeedsNoFallback) {
  set().screen_saver().SetTimeout(300);
  EXPECT_EQ(Set("1"), kSuccess);
  EXPECT_EQ(set().screen_saver().state().timeout_seconds, 300);
}

TEST_F(ScreenSaverTest, SwitchingOnFailsWhenTheServiceRefusesTwice) {
  Set("0");
  waits_.AwaitWait(1);
  Fail("screensaver_set_appid");
  Fail("screensaver_set_timeout");
  ClearLog();

  EXPECT_EQ(Set("1"),
            R"({"callbackId":1,"error":{"code":9999,"message":"Fail to activate ScreenSaver",)"
            R"("name":"UnknownError"},"status":"error"})");

  EXPECT_THAT(Messages(), ElementsAre("E" + kTask + "Fail to activate screensaver", kFinalised));
  // The timer runs on.
  waits_.PassDeadline();
  waits_.AwaitWait(2);
  EXPECT_EQ(Resets(), 1U);
}

TEST_F(ScreenSaverTest, ClosingThePageStopsTheTimer) {
  Set("0");
  waits_.AwaitWait(1);
  ClearLog();
  CloseInstance();
  EXPECT_THAT(Messages(), Contains("D" + kTimer +
                                   "KeepAwake: [Screensaver] Timer thread "
                                   "terminate"));
  EXPECT_EQ(Resets(), 0U);
}

TEST_F(ScreenSaverTest, EachPageHasATimerOfItsOwn) {
  const XW_Instance other = host_.Create();
  Set("0");
  waits_.AwaitWait(1);
  ClearLog();
  host_.Destroy(other);
  EXPECT_THAT(Messages(), Not(Contains("I" + kTimer + "stopTimer: [Screensaver] Stopping timer")));
  EXPECT_EQ(Set("1"), kSuccess);
}

}  // namespace
}  // namespace orvane::test
