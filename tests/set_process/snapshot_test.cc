// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>

#include "driver.h"

namespace orvane::television {
namespace {

using picojson::array;
using picojson::object;
using picojson::value;

class SnapshotTest : public SetProcessTest {
 protected:
  SnapshotTest() { Start(); }

  // What the set was like before is what it is like in the next process.
  void KillAndStartAgain() {
    Kill();
    EXPECT_EQ(Start({}, snapshot_).get("warnings").serialize(), "[]");
  }

  // Keeps the snapshot in which the value stands.
  void WaitForSnapshotWith(const std::string& part, const std::string& text) {
    snapshot_ = WaitFor([&](const value& frame) {
                  return frame.get("op").to_str() == "snapshot" &&
                         frame.get("data").get(part).serialize().find(text) != std::string::npos;
                }).get("data");
  }
  void WaitForSnapshot() { snapshot_ = WaitForOp("snapshot").get("data"); }

 private:
  value snapshot_;
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
  const value before = Control("state.get");
  KillAndStartAgain();
  const value after = Control("state.get");
  for (const char* part : {"features", "focused", "windows", "inputMethod", "keyGrabs", "settings",
                           "faults", "panel"}) {
    EXPECT_EQ(after.get(part).serialize(), before.get(part).serialize()) << part;
  }
  EXPECT_EQ(after.get("profile").get("name").to_str(), "fhd");
  EXPECT_EQ(after.get("applications").get(0).get("stateName").to_str(), "SERVICE");
  EXPECT_EQ(after.get("applications").get(1).get("stateName").to_str(), "FOREGROUND");
  EXPECT_EQ(after.get("applications").get(1).get("pid").get<double>(), pid());
}

TEST_F(SnapshotTest, KeepsTheScreenSaversOwnerAndTheMovedClock) {
  Control("clock.advance", R"({"ms":1000})");
  WaitForSnapshotWith("screenSaver", R"("clockShiftMs":1000)");
  KillAndStartAgain();
  const value saver = State("screenSaver");
  EXPECT_EQ(saver.get("owner").to_str(), "DEFAULT");
  EXPECT_FALSE(saver.get("on").get<bool>());
  EXPECT_GT(saver.get("remainingMs").get<double>(), 200000);
}

TEST_F(SnapshotTest, KeepsTheWaitOfTheScreenSaver) {
  Control("keys.press", R"({"name":"Left"})");
  Control("clock.advance", R"({"ms":250000})");
  WaitForSnapshotWith("screenSaver", R"("clockShiftMs":250000)");
  KillAndStartAgain();
  const value saver = State("screenSaver");
  EXPECT_LE(saver.get("remainingMs").get<double>(), 50000);
  EXPECT_EQ(saver.get("inputs").get<double>(), 1);
  EXPECT_TRUE(Control("clock.advance", R"({"ms":50000})").get("on").get<bool>());
}

TEST_F(SnapshotTest, KeepsAScreenSaverThatIsOn) {
  Control("clock.advance", R"({"ms":400000})");
  WaitForSnapshotWith("screenSaver", R"("clockShiftMs":400000)");
  KillAndStartAgain();
  EXPECT_TRUE(State("screenSaver").get("on").get<bool>());
  Control("keys.press", R"({"name":"Left"})");
  EXPECT_FALSE(State("screenSaver").get("on").get<bool>());
}

TEST_F(SnapshotTest, KeepsHowOftenAFunctionFailed) {
  Control("faults.set", R"({"function":"app_context_manager_init","code":-1})");
  Orvane(7, "requestTvContextTask", R"({"target":0,"action":0})");
  WaitForSnapshotWith("faults", R"("hits":1)");
  KillAndStartAgain();
  EXPECT_EQ(State("faults").get(0).get("hits").get<double>(), 1);
}

TEST_F(SnapshotTest, KeepsASettingInMemoryThatWasWrittenAMomentBeforeTheEnd) {
  Control("keys.press", R"({"name":"Left"})");
  WaitForSnapshot();
  Control("settings.set", R"({"key":"memory/late","value":"here"})");
  KillAndStartAgain();
  EXPECT_EQ(Control("settings.get", R"({"key":"memory/late"})").get("value").to_str(), "here");
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
  EXPECT_FALSE(State("applications").get(0).get("running").get<bool>());
}

TEST_F(SnapshotTest, ServesInTheNextProcess) {
  Control("keys.press", R"({"name":"Left"})");
  WaitForSnapshot();
  KillAndStartAgain();
  EXPECT_EQ(Orvane(7, "getVersion").get("result").to_str(), "3.9");
  EXPECT_EQ(Orvane(7, "getAppState", R"({"appid":""})").get("result").to_str(), "FOREGROUND");
}

TEST_F(SnapshotTest, StartsWithADamagedOneAndSaysWhatIsLost) {
  Kill();
  const value started = Start({}, Json(R"({"features":[1],"running":"x","focused":7,
      "keyGrabs":[{"app":1}],"windows":{"list":[{"app":"aBcDe01234.App","stackMode":"NONE",
      "position":[1e300,0],"hints":{}}]},"screenSaver":{"sinceMs":-1},"faults":[{"function":"x"}]})"));
  EXPECT_EQ(started.get("op").to_str(), "started");
  EXPECT_GE(started.get("warnings").get<array>().size(), 6U);
  EXPECT_EQ(Orvane(7, "getVersion").get("result").to_str(), "3.9");
}

}  // namespace
}  // namespace orvane::television
