// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <set>
#include <string>

#include "driver.h"

namespace orvane::television {
namespace {

using picojson::array;
using picojson::value;
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
  Control("log.write", R"({"priority":"W","tag":"MY \"TAG\"","text":"a\nb"})");
  value line;
  WaitForEvent("log", [&](const value& data) {
    for (const value& each : data.get<array>()) {
      if (each.get("tag").to_str() == "MY \"TAG\"") line = each;
    }
    return line.is<picojson::object>();
  });
  EXPECT_EQ(line.get("text").to_str(), "a\nb");
  EXPECT_EQ(line.get("letter").to_str(), "W");
  EXPECT_EQ(line.get("priority").get<double>(), 5);
  EXPECT_EQ(line.get("pid").get<double>(), pid());
  EXPECT_GT(line.get("time_ns").get<double>(), 1e18);
}

TEST_F(EventsTest, PutsLinesOfOneMomentIntoFewFrames) {
  Control("log.write", R"({"tag":"MANY","text":"x","count":1024})");
  size_t frames = 0;
  for (size_t lines = 0; lines < 1024; ++frames) {
    lines += WaitForEvent("log").get<array>().size();
  }
  EXPECT_LE(frames, 100U);
}

TEST_F(EventsTest, TellsWhereAKeyWentAndWhy) {
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  Control("keys.press", R"({"name":"XF86Red","long":true})");
  const value key = WaitForEvent("key");
  EXPECT_EQ(key.get("key_name").to_str(), "XF86Red");
  EXPECT_EQ(key.get("key_code").get<double>(), 403);
  EXPECT_EQ(key.get("app").to_str(), kApp);
  EXPECT_EQ(key.get("reason").to_str(), "registered");
  EXPECT_TRUE(key.get("delivered").get<bool>());
  EXPECT_TRUE(key.get("long").get<bool>());
  EXPECT_FALSE(key.get("injected").get<bool>());
}

TEST_F(EventsTest, PressesTheKeyThatAHeldOneIs) {
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Exit");
  Control("keys.press", R"({"name":"Back","long":true})");
  const value key = WaitForEvent("key");
  EXPECT_EQ(key.get("key_name").to_str(), "XF86Exit");
  EXPECT_TRUE(key.get("delivered").get<bool>());
  EXPECT_FALSE(key.get("long").get<bool>());  // it comes once, and not again and again
  EXPECT_THAT(key.get("text").to_str(),
              testing::StartsWith("XF86Back held down is XF86Exit: XF86Exit reaches"));
  Control("keys.press", R"({"name":"XF86Exit"})");
  EXPECT_THAT(WaitForEvent("key").get("text").to_str(), testing::StartsWith("XF86Exit reaches"));
}

TEST_F(EventsTest, TellsThatAComponentPressedTheKey) {
  Orvane(7, "generateKey", R"({"xKeyCode":113})");
  const value key = WaitForEvent("key");
  EXPECT_EQ(key.get("key_name").to_str(), "Left");
  EXPECT_TRUE(key.get("injected").get<bool>());
  EXPECT_FALSE(key.get("long").get<bool>());
}

TEST_F(EventsTest, TellsAKeyThatTheBrowserDeliveredItself) {
  Control("keys.press", R"({"name":"Left","native":true})");
  EXPECT_TRUE(WaitForEvent("key").get("native").get<bool>());
  Orvane(7, "generateKey", R"({"xKeyCode":113})");
  EXPECT_FALSE(WaitForEvent("key").get("native").get<bool>());
}

TEST_F(EventsTest, TellsAContextRequest) {
  Orvane(7, "requestTvContextTask", R"({"target":0,"action":0})");
  const value task = WaitForEvent("contextTask");
  EXPECT_EQ(task.get("target").to_str(), "last:source");
  EXPECT_EQ(task.get("action").to_str(), "launch");
}

TEST_F(EventsTest, TellsAKernelMarker) {
  Orvane(7, "recordProfiling", R"({"label":"start-up","callbackId":1})");
  const value marker = WaitForEvent("kernelMarker");
  EXPECT_THAT(marker.get("text").to_str(), HasSubstr("start-up"));
  EXPECT_GT(marker.get("time_ns").get<double>(), 1e18);
  EXPECT_EQ(Control("markers.list").serialize(), "[" + marker.serialize() + "]");
}

TEST_F(EventsTest, TellsThePartThatChanged) {
  Runtime("sync", "dravelt://orvane/setIMEPosition", "100,200,3");
  const value keyboard = WaitForEvent("inputMethod");
  EXPECT_EQ(keyboard.get("x").get<double>(), 100);
  EXPECT_EQ(keyboard.get("align").get<double>(), 3);
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  EXPECT_EQ(WaitForEvent("keyGrabs").get(0).get("key").to_str(), "XF86Red");
}

TEST_F(EventsTest, TellsManyChangesOfAPartAsFew) {
  for (int i = 0; i < 1000; ++i) {
    Runtime("sync", "dravelt://orvane/setIMEPosition", std::to_string(i) + ",0,0");
  }
  size_t events = 0;
  WaitForEvent("inputMethod", [&](const value& data) {
    ++events;
    return data.get("x").get<double>() == 999;
  });
  EXPECT_LT(events, 500U);
}

TEST_F(EventsTest, ExplainsWhatTheSetItselfRefuses) {
  Orvane(7, "checkPlatformLevelPrivilege");
  const value explained = WaitForEvent("explain");
  EXPECT_THAT(explained.get("text").to_str(), HasSubstr("privilege"));
  EXPECT_EQ(explained.get("context").get<double>(), 7);
}

}  // namespace
}  // namespace orvane::television
