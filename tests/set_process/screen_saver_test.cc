// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using picojson::value;
using testing::HasSubstr;

class ScreenSaverControlTest : public SetProcessTest {
 protected:
  ScreenSaverControlTest() { Start(); }
};

TEST_F(ScreenSaverControlTest, ComesOnWhenTheClockIsMovedPastItsTimeOut) {
  Control("clock.advance", R"({"ms":299000})");
  EXPECT_FALSE(State("screenSaver").get("on").get<bool>());
  const value moved = Control("clock.advance", R"({"ms":2000})");
  EXPECT_TRUE(moved.get("on").get<bool>());
  EXPECT_TRUE(moved.get("remainingMs").is<picojson::null>());
  WaitForEvent("screenSaver", [](const value& data) { return data.get("on").get<bool>(); });
}

TEST_F(ScreenSaverControlTest, CountsDown) {
  const double before = State("screenSaver").get("remainingMs").get<double>();
  const value after = Control("clock.advance", R"({"ms":100000})");
  EXPECT_LE(after.get("remainingMs").get<double>(), before - 100000);
  EXPECT_EQ(after.get("timeoutSeconds").get<double>(), 300);
}

TEST_F(ScreenSaverControlTest, GoesWithAKeyAndWithActivity) {
  Control("clock.advance", R"({"ms":400000})");
  Control("keys.press", R"({"name":"Left"})");
  EXPECT_FALSE(State("screenSaver").get("on").get<bool>());
  Control("clock.advance", R"({"ms":400000})");
  const value saver = Control("screenSaver.activity");
  EXPECT_FALSE(saver.get("on").get<bool>());
  EXPECT_EQ(saver.get("inputs").get<double>(), 2);
}

TEST_F(ScreenSaverControlTest, NeverComesOnWithTheTimeOutOfAProfileThatSaysSo) {
  Control("features.set", R"({"key":"orvane.set/screen_saver_seconds","type":"int","text":"0"})");
  const value saver = Control("clock.advance", R"({"ms":86400000})");
  EXPECT_FALSE(saver.get("on").get<bool>());
  EXPECT_EQ(saver.get("timeoutSeconds").get<double>(), 0);
  EXPECT_TRUE(saver.get("remainingMs").is<picojson::null>());
}

TEST_F(ScreenSaverControlTest, RefusesToGoBack) {
  EXPECT_THAT(ControlError("clock.advance", R"({"ms":-1})"), HasSubstr("\"ms\""));
}

}  // namespace
}  // namespace orvane::television
