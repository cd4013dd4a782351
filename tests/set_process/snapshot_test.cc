// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>

#include "driver.h"

namespace orvane::television {
namespace {

class SnapshotTest : public SetProcessTest {
 protected:
  SnapshotTest() { Start(); }

  // What the set was like before is what it is like in the next process.
  void KillAndStartAgain() {
    Kill();
    EXPECT_EQ(Start(Json::object(), snapshot_).at("warnings").dump(), "[]");
  }

  // Keeps the snapshot in which the value stands.
  void WaitForSnapshotWith(const std::string& part, const std::string& text) {
    snapshot_ = WaitFor([&](const Json& frame) {
                  return frame.at("op").get<std::string>() == "snapshot" &&
                         frame.at("data").at(part).dump().find(text) != std::string::npos;
                }).at("data");
  }
  void WaitForSnapshot() { snapshot_ = WaitForOp("snapshot").at("data"); }

 private:
  Json snapshot_;
};

TEST_F(SnapshotTest, BringsTheSetBackInTheNextProcess) {
  Control("applications.install", R"({"folder":")" EXAMPLES R"(/tour"})");
  Control("applications.launch", R"({"id":"OrvaneTour.Tour"})");
  Control("applications.focus", R"({"id":"aBcDe01234.App"})");
  Control("applications.setState", R"({"id":"OrvaneTour.Tour","state":"SERVICE"})");
  Control("profile.use", R"({"profile":"fhd"})");
  Control("features.set", R"({"key":"my.feature","type":"bool","text":"true"})");
  Control("features.remove", R"({"key":"tizen.org/feature/profile"})");
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  Runtime("sync", "dravelt://orvane/RegisterKeyInSpecialMode", "XF86Green,5");
  Runtime("async", "dravelt://orvane/setAuxHint", "a hint,its value");
  Runtime("sync", "tizen://setWindowStackMode", "ABOVE");
  Runtime("plain", "dravelt://orvane/setIMERecommendedType", "1");
  Runtime("plain", "dravelt://orvane/setIMERecommendedWords", "one,two");
  Runtime("sync", "dravelt://orvane/setIMEPosition", "5,6,8");
  Control("inputMethod.setDynamic", R"({"dynamic":false})");
  Control("settings.set", R"({"key":"memory/a","value":3})");
  Control("settings.set", R"({"key":"db/b","value":true})");
  Control("faults.set", R"({"function":"vconf_set_str","code":-7})");
  WaitForSnapshotWith("faults", "-7");
  const Json before = Control("state.get");
  KillAndStartAgain();
  const Json after = Control("state.get");
  for (const char* part : {"features", "focused", "windows", "inputMethod", "keyGrabs", "settings",
                           "faults", "panel"}) {
    EXPECT_EQ(after.at(part).dump(), before.at(part).dump()) << part;
  }
  EXPECT_EQ(after.at("profile").at("name"), "fhd");
  EXPECT_EQ(after.at("applications").at(0).at("stateName"), "SERVICE");
  EXPECT_EQ(after.at("applications").at(1).at("stateName"), "FOREGROUND");
  EXPECT_EQ(after.at("applications").at(1).at("pid"), pid());
}

TEST_F(SnapshotTest, KeepsTheScreenSaversOwnerAndTheMovedClock) {
  Control("clock.advance", R"({"ms":1000})");
  WaitForSnapshotWith("screenSaver", R"("clockShiftMs":1000)");
  KillAndStartAgain();
  const Json saver = State("screenSaver");
  EXPECT_EQ(saver.at("owner"), "DEFAULT");
  EXPECT_FALSE(saver.at("on").get<bool>());
  EXPECT_GT(saver.at("remainingMs").get<double>(), 200000);
}

TEST_F(SnapshotTest, KeepsTheWaitOfTheScreenSaver) {
  Control("keys.press", R"({"name":"Left"})");
  Control("clock.advance", R"({"ms":250000})");
  WaitForSnapshotWith("screenSaver", R"("clockShiftMs":250000)");
  KillAndStartAgain();
  const Json saver = State("screenSaver");
  EXPECT_LE(saver.at("remainingMs").get<double>(), 50000);
  EXPECT_EQ(saver.at("inputs"), 1);
  EXPECT_TRUE(Control("clock.advance", R"({"ms":50000})").at("on").get<bool>());
}

TEST_F(SnapshotTest, KeepsAScreenSaverThatIsOn) {
  Control("clock.advance", R"({"ms":400000})");
  WaitForSnapshotWith("screenSaver", R"("clockShiftMs":400000)");
  KillAndStartAgain();
  EXPECT_TRUE(State("screenSaver").at("on").get<bool>());
  Control("keys.press", R"({"name":"Left"})");
  EXPECT_FALSE(State("screenSaver").at("on").get<bool>());
}

TEST_F(SnapshotTest, KeepsHowOftenAFunctionFailed) {
  Control("faults.set", R"({"function":"app_context_manager_init","code":-1})");
  Orvane(7, "requestTvContextTask", R"({"target":0,"action":0})");
  WaitForSnapshotWith("faults", R"("hits":1)");
  KillAndStartAgain();
  EXPECT_EQ(State("faults").at(0).at("hits"), 1);
}

TEST_F(SnapshotTest, KeepsASettingInMemoryThatWasWrittenAMomentBeforeTheEnd) {
  Control("keys.press", R"({"name":"Left"})");
  WaitForSnapshot();
  Control("settings.set", R"({"key":"memory/late","value":"here"})");
  KillAndStartAgain();
  EXPECT_EQ(Setting("memory/late").at("value"), "here");
}

TEST_F(SnapshotTest, IsToldBeforeAMessageThatEndsTheProcess) {
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  Post(7, "abort", kTester);
  WaitForSnapshotWith("keyGrabs", "XF86Red");
  EXPECT_EQ(WaitForExit(), 128 + SIGABRT);
}

TEST_F(SnapshotTest, KeepsAnApplicationThatWasEnded) {
  Control("applications.terminate", R"({"id":"aBcDe01234.App"})");
  WaitForSnapshotWith("running", "[]");
  KillAndStartAgain();
  EXPECT_FALSE(State("applications").at(0).at("running").get<bool>());
}

TEST_F(SnapshotTest, ServesInTheNextProcess) {
  Control("keys.press", R"({"name":"Left"})");
  WaitForSnapshot();
  KillAndStartAgain();
  EXPECT_EQ(Orvane(7, "getVersion").at("result"), "3.9");
  EXPECT_EQ(Orvane(7, "getAppState", R"({"appid":""})").at("result"), "FOREGROUND");
}

TEST_F(SnapshotTest, StartsWithADamagedOneAndSaysWhatIsLost) {
  Kill();
  const Json started =
      Start(Json::object(), base::ParseJson(R"({"features":[1],"running":"x","focused":7,
      "keyGrabs":[{"app":1}],"windows":{"list":[{"app":"aBcDe01234.App","stackMode":"NONE",
      "position":[1e300,0],"hints":{}}]},"screenSaver":{"sinceMs":-1},"faults":[{"function":"x"}]})"));
  EXPECT_EQ(started.at("op"), "started");
  EXPECT_GE(started.at("warnings").size(), 6U);
  EXPECT_EQ(Orvane(7, "getVersion").at("result"), "3.9");
}

}  // namespace
}  // namespace orvane::television
