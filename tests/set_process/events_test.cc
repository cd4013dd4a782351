// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <set>
#include <string>

#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

class EventsTest : public SetProcessTest {
 protected:
  EventsTest() { Start(); }
};

TEST_F(EventsTest, BringsEveryLineOfAFlood) {
  constexpr size_t kLines = 20000;
  Sync(7, "flood:" + std::to_string(kLines), kTester);
  const std::vector<std::string> lines = WaitForLog("TESTER", kLines + 1);  // and "created"
  const std::set<std::string> different(lines.begin(), lines.end());
  EXPECT_EQ(different.size(), kLines + 1);
}

TEST_F(EventsTest, TellsALogLineInFull) {
  Control("debug.log", R"({"priority":5,"tag":"MY \"TAG\"","text":"a\nb"})");
  Json line;
  WaitForEvent("log", [&](const Json& data) {
    for (const Json& each : data) {
      if (each.at("tag").get<std::string>() == "MY \"TAG\"") line = each;
    }
    return line.is_object();
  });
  EXPECT_EQ(line.at("text"), "a\nb");
  EXPECT_EQ(line.at("letter"), "W");
  EXPECT_EQ(line.at("priority"), 5);
  EXPECT_EQ(line.at("pid"), pid());
  EXPECT_GT(line.at("time_ns").get<double>(), 1e18);
}

TEST_F(EventsTest, PutsLinesOfOneMomentIntoFewFrames) {
  Control("debug.log", R"({"tag":"MANY","text":"x","count":1024})");
  size_t frames = 0;
  for (size_t lines = 0; lines < 1024; ++frames) {
    lines += WaitForEvent("log").size();
  }
  EXPECT_LE(frames, 100U);
}

TEST_F(EventsTest, TellsWhereAKeyWentAndWhy) {
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  Control("keys.press", R"({"name":"XF86Red","long":true})");
  const Json key = WaitForEvent("key");
  EXPECT_EQ(key.at("key_name"), "XF86Red");
  EXPECT_EQ(key.at("key_code"), 403);
  EXPECT_EQ(key.at("app"), kApp);
  EXPECT_EQ(key.at("reason"), "registered");
  EXPECT_TRUE(key.at("delivered").get<bool>());
  EXPECT_TRUE(key.at("long").get<bool>());
  EXPECT_FALSE(key.at("injected").get<bool>());
}

TEST_F(EventsTest, PressesTheKeyThatAHeldOneIs) {
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Exit");
  Control("keys.press", R"({"name":"Back","long":true})");
  const Json key = WaitForEvent("key");
  EXPECT_EQ(key.at("key_name"), "XF86Exit");
  EXPECT_TRUE(key.at("delivered").get<bool>());
  EXPECT_FALSE(key.at("long").get<bool>());  // it comes once, and not again and again
  EXPECT_THAT(key.at("text").get<std::string>(),
              testing::StartsWith("XF86Back held down is XF86Exit: XF86Exit reaches"));
  Control("keys.press", R"({"name":"XF86Exit"})");
  EXPECT_THAT(WaitForEvent("key").at("text").get<std::string>(),
              testing::StartsWith("XF86Exit reaches"));
}

TEST_F(EventsTest, TellsThatAComponentPressedTheKey) {
  Orvane(7, "generateKey", R"({"xKeyCode":113})");
  const Json key = WaitForEvent("key");
  EXPECT_EQ(key.at("key_name"), "Left");
  EXPECT_TRUE(key.at("injected").get<bool>());
  EXPECT_FALSE(key.at("long").get<bool>());
}

TEST_F(EventsTest, TellsAKeyThatTheBrowserDeliveredItself) {
  Control("keys.press", R"({"name":"Left","native":true})");
  EXPECT_TRUE(WaitForEvent("key").at("native").get<bool>());
  Orvane(7, "generateKey", R"({"xKeyCode":113})");
  EXPECT_FALSE(WaitForEvent("key").at("native").get<bool>());
}

TEST_F(EventsTest, TellsAContextRequest) {
  Orvane(7, "requestTvContextTask", R"({"target":0,"action":0})");
  const Json task = WaitForEvent("contextTask");
  EXPECT_EQ(task.at("target"), "last:source");
  EXPECT_EQ(task.at("action"), "launch");
}

TEST_F(EventsTest, TellsAKernelMarker) {
  Orvane(7, "recordProfiling", R"({"label":"start-up","callbackId":1})");
  const Json marker = WaitForEvent("kernelMarker");
  EXPECT_THAT(marker.at("text").get<std::string>(), HasSubstr("start-up"));
  EXPECT_GT(marker.at("time_ns").get<double>(), 1e18);
  EXPECT_EQ(Control("markers.list").dump(), "[" + marker.dump() + "]");
}

TEST_F(EventsTest, TellsThePartThatChanged) {
  Runtime("sync", "dravelt://orvane/setIMEPosition", "100,200,3");
  const Json keyboard = WaitForEvent("inputMethod");
  EXPECT_EQ(keyboard.at("x"), 100);
  EXPECT_EQ(keyboard.at("align"), 3);
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  EXPECT_EQ(WaitForEvent("keyGrabs").at(0).at("key"), "XF86Red");
}

TEST_F(EventsTest, TellsManyChangesOfAPartAsFew) {
  for (int i = 0; i < 1000; ++i) {
    Runtime("sync", "dravelt://orvane/setIMEPosition", std::to_string(i) + ",0,0");
  }
  size_t events = 0;
  WaitForEvent("inputMethod", [&](const Json& data) {
    ++events;
    return data.at("x").get<double>() == 999;
  });
  EXPECT_LT(events, 500U);
}

TEST_F(EventsTest, ExplainsWhatTheSetItselfRefuses) {
  Orvane(7, "checkPlatformLevelPrivilege");
  const Json explained = WaitForEvent("explain");
  EXPECT_THAT(explained.at("text").get<std::string>(), HasSubstr("privilege"));
  EXPECT_EQ(explained.at("context"), 7);
}

}  // namespace
}  // namespace orvane::television
