// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

class ScreenSaverControlTest : public SetProcessTest {
 protected:
  ScreenSaverControlTest() { Start(); }
};

TEST_F(ScreenSaverControlTest, ComesOnWhenTheClockIsMovedPastItsTimeOut) {
  Control("clock.advance", R"({"ms":299000})");
  EXPECT_FALSE(State("screenSaver").at("on").get<bool>());
  const Json moved = Control("clock.advance", R"({"ms":2000})");
  EXPECT_TRUE(moved.at("on").get<bool>());
  EXPECT_TRUE(moved.at("remainingMs").is_null());
  WaitForEvent("screenSaver", [](const Json& data) { return data.at("on").get<bool>(); });
}

TEST_F(ScreenSaverControlTest, CountsDown) {
  const double before = State("screenSaver").at("remainingMs").get<double>();
  const Json after = Control("clock.advance", R"({"ms":100000})");
  EXPECT_LE(after.at("remainingMs").get<double>(), before - 100000);
  EXPECT_EQ(after.at("timeoutSeconds"), 300);
}

TEST_F(ScreenSaverControlTest, GoesWithAKeyAndWithActivity) {
  Control("clock.advance", R"({"ms":400000})");
  Control("keys.press", R"({"name":"Left"})");
  EXPECT_FALSE(State("screenSaver").at("on").get<bool>());
  Control("clock.advance", R"({"ms":400000})");
  const Json saver = Control("screenSaver.activity");
  EXPECT_FALSE(saver.at("on").get<bool>());
  EXPECT_EQ(saver.at("inputs"), 2);
}

TEST_F(ScreenSaverControlTest, NeverComesOnWithTheTimeOutOfAProfileThatSaysSo) {
  Control("features.set", R"({"key":"orvane.set/screen_saver_seconds","type":"int","text":"0"})");
  const Json saver = Control("clock.advance", R"({"ms":86400000})");
  EXPECT_FALSE(saver.at("on").get<bool>());
  EXPECT_EQ(saver.at("timeoutSeconds"), 0);
  EXPECT_TRUE(saver.at("remainingMs").is_null());
}

TEST_F(ScreenSaverControlTest, RefusesToGoBack) {
  EXPECT_THAT(ControlError("clock.advance", R"({"ms":-1})"), HasSubstr("\"ms\""));
}

}  // namespace
}  // namespace orvane::television
