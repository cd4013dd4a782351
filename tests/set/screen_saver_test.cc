// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/screen_saver.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <screensaver.h>

#include "set_fixture.h"
#include "tvset/profile_keys.h"

namespace tvset::testing {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

class Events final : public Observer {
 public:
  void OnScreenSaverOn() override { Add("on"); }
  void OnScreenSaverOff() override { Add("off"); }

  std::string text() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return text_;
  }
  bool WaitFor(const std::string& text) {
    std::unique_lock<std::mutex> lock(mutex_);
    return changed_.wait_for(lock, seconds(30), [&] { return text_ == text; });
  }

 private:
  void Add(const std::string& event) {
    const std::lock_guard<std::mutex> lock(mutex_);
    text_ += event + " ";
    changed_.notify_all();
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::string text_;
};

// A set whose screen saver comes on after 300 seconds of a clock that stands still.
class ScreenSaverTest : public SetTest {
 protected:
  ScreenSaverTest() {
    saver().set_clock(clock_);
    set().events().Add(&events_);
  }
  ~ScreenSaverTest() override { set().events().Remove(&events_); }

  static ScreenSaver& saver() { return set().screen_saver(); }
  static bool on() { return saver().state().on; }

  std::shared_ptr<ManualClock> clock_ = std::make_shared<ManualClock>();
  Events events_;
};

TEST_F(ScreenSaverTest, ComesOnWhenNothingResetsIt) {
  clock_->Advance(seconds(299));
  EXPECT_FALSE(on());
  clock_->Advance(seconds(1));
  EXPECT_TRUE(on());
  clock_->Advance(minutes(60));
  EXPECT_EQ(events_.text(), "on ");
}

TEST_F(ScreenSaverTest, ResetsEveryThirtySecondsKeepItAway) {
  for (int i = 0; i < 100; ++i) {
    clock_->Advance(seconds(30));
    EXPECT_EQ(screensaver_reset_timeout(), 0);
  }
  EXPECT_EQ(saver().state().resets, 100u);
  clock_->Advance(seconds(299));
  EXPECT_EQ(events_.text(), "");
  clock_->Advance(seconds(1));
  EXPECT_EQ(events_.text(), "on ");
}

TEST_F(ScreenSaverTest, ResetMakesItGo) {
  clock_->Advance(seconds(300));
  screensaver_reset_timeout();
  EXPECT_FALSE(on());
  EXPECT_EQ(events_.text(), "on off ");
  clock_->Advance(seconds(300));
  EXPECT_EQ(events_.text(), "on off on ");
}

TEST_F(ScreenSaverTest, KeyMakesItGoAndIsDelivered) {
  Launch("ab12cd34ef.Player");
  clock_->Advance(seconds(300));
  const KeyDelivery delivery = set().key_grabs().Press("Return");
  EXPECT_FALSE(on());
  EXPECT_EQ(delivery.app, set().key_grabs().Route("Return").app);
  EXPECT_EQ(saver().state().inputs, 1u);
  EXPECT_EQ(saver().state().resets, 0u);
}

TEST_F(ScreenSaverTest, KeyStartsTheWaitAfresh) {
  clock_->Advance(seconds(200));
  set().key_grabs().Press("Return");
  clock_->Advance(seconds(299));
  EXPECT_FALSE(on());
  EXPECT_EQ(saver().state().idle, seconds(299));
  clock_->Advance(seconds(1));
  EXPECT_TRUE(on());
}

TEST_F(ScreenSaverTest, TimeoutOfAnApplicationComesFirst) {
  screensaver_set_timeout(10);
  EXPECT_EQ(saver().state().timeout, seconds(10));
  clock_->Advance(milliseconds(9999));
  EXPECT_FALSE(on());
  clock_->Advance(milliseconds(1));
  EXPECT_TRUE(on());
}

TEST_F(ScreenSaverTest, TimeoutThatHasPassedBringsItOnAtOnce) {
  clock_->Advance(seconds(100));
  screensaver_set_timeout(60);
  EXPECT_EQ(events_.text(), "on ");
}

TEST_F(ScreenSaverTest, LongerTimeoutIsWaitedFor) {
  screensaver_set_timeout(1000);
  clock_->Advance(seconds(999));
  EXPECT_FALSE(on());
  clock_->Advance(seconds(1));
  EXPECT_TRUE(on());
}

TEST_F(ScreenSaverTest, ShorterTimeoutRingsBeforeTheLongerOne) {
  screensaver_set_timeout(1000);
  screensaver_set_timeout(20);
  clock_->Advance(seconds(20));
  screensaver_set_timeout(1000);
  screensaver_reset_timeout();
  clock_->Advance(seconds(999));
  EXPECT_EQ(events_.text(), "on off ");
}

TEST_F(ScreenSaverTest, TimeoutOfZeroIsTheSetsOwn) {
  screensaver_set_timeout(10);
  screensaver_set_timeout(0);
  EXPECT_EQ(saver().state().timeout, seconds(300));
  clock_->Advance(seconds(299));
  EXPECT_FALSE(on());
}

TEST_F(ScreenSaverTest, OwnerAndTimeoutDoNotChangeWithEachOther) {
  screensaver_set_appid("com.example.art");
  screensaver_set_timeout(10);
  EXPECT_EQ(saver().state().app_id, "com.example.art");
  screensaver_set_appid("DEFAULT");
  EXPECT_EQ(saver().state().app_id, "DEFAULT");
  EXPECT_EQ(saver().state().timeout, seconds(10));
}

TEST_F(ScreenSaverTest, OwnerDoesNotStartTheWaitAfresh) {
  clock_->Advance(seconds(200));
  screensaver_set_appid("com.example.art");
  clock_->Advance(seconds(100));
  EXPECT_TRUE(on());
}

TEST_F(ScreenSaverTest, ProfileSaysTheSetsOwnTimeout) {
  set().features().Set(kScreenSaverKey, "int", "60", FeatureGroup::kCustom);
  EXPECT_EQ(saver().state().timeout, seconds(60));
  set().features().Remove(kScreenSaverKey);
  EXPECT_EQ(saver().state().timeout, minutes(5));
}

TEST_F(ScreenSaverTest, ProfileMayKeepItAway) {
  set().features().Set(kScreenSaverKey, "int", "0", FeatureGroup::kCustom);
  screensaver_reset_timeout();
  clock_->Advance(minutes(600));
  EXPECT_FALSE(on());
  screensaver_set_timeout(5);
  EXPECT_TRUE(on());
}

TEST_F(ScreenSaverTest, FailedCallsChangeNothing) {
  set().faults().Fail("screensaver_reset_timeout", -1, FaultMode::kOnce);
  clock_->Advance(seconds(200));
  EXPECT_EQ(screensaver_reset_timeout(), -1);
  EXPECT_EQ(saver().state().resets, 0u);
  clock_->Advance(seconds(100));
  EXPECT_TRUE(on());
}

TEST_F(ScreenSaverTest, RestartForgetsEverythingAndTheClock) {
  screensaver_set_timeout(10);
  screensaver_reset_timeout();
  StartSet();
  clock_->Advance(minutes(60));
  const ScreenSaverState state = saver().state();
  EXPECT_FALSE(state.on);
  EXPECT_EQ(state.resets, 0u);
  EXPECT_EQ(state.timeout, seconds(300));
  EXPECT_EQ(events_.text(), "");
}

// The machine's clock, a hundred times as fast.
class FastClock final : public Clock {
 public:
  TimePoint Now() const override { return start_ + (steady_->Now() - start_) * kSpeed; }
  void SetAlarm(TimePoint when, std::function<void()> ring) override {
    steady_->SetAlarm(start_ + (when - start_) / kSpeed, std::move(ring));
  }

 private:
  static constexpr int kSpeed = 100;
  const std::shared_ptr<Clock> steady_ = Clock::Steady();
  const TimePoint start_ = steady_->Now();
};

TEST_F(ScreenSaverTest, ComesOnByItselfOnTheSteadyClock) {
  saver().set_clock(std::make_shared<FastClock>());
  screensaver_set_timeout(1);
  EXPECT_TRUE(events_.WaitFor("on "));
  EXPECT_GE(saver().state().idle, seconds(1));
}

TEST(ManualClockTest, AlarmsRingInTheirOrderAndAtTheirTimes) {
  ManualClock clock;
  const Clock::TimePoint start = clock.Now();
  std::vector<int64_t> times;
  const auto ring = [&] { times.push_back((clock.Now() - start) / seconds(1)); };
  clock.SetAlarm(start + seconds(5), ring);
  clock.SetAlarm(start + seconds(2), [&] {
    ring();
    clock.SetAlarm(start + seconds(4), ring);
  });
  clock.Advance(seconds(4));
  EXPECT_EQ(times, (std::vector<int64_t>{2, 4}));
  clock.Advance(seconds(10));
  EXPECT_EQ(times, (std::vector<int64_t>{2, 4, 5}));
  EXPECT_EQ(clock.Now() - start, seconds(14));
}

}  // namespace
}  // namespace tvset::testing
