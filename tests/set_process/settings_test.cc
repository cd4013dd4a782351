// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/settings.h"

#include "driver.h"
#include "tvset/events.h"
#include "tvset/paths.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

class SettingsTest : public SetProcessTest {
 protected:
  SettingsTest() { Start(); }
  std::string Get(const std::string& key) {
    const Json setting = Setting(key);
    return setting.at("type").get<std::string>() + " " + setting.at("value").dump();
  }
};

TEST_F(SettingsTest, TakesTheTypeFromTheValue) {
  Control("settings.set", R"({"key":"db/a","value":"text"})");
  Control("settings.set", R"({"key":"db/b","value":7})");
  Control("settings.set", R"({"key":"db/c","value":0.5})");
  Control("settings.set", R"({"key":"memory/d","value":true})");
  EXPECT_EQ(Get("db/a"), R"(string "text")");
  EXPECT_EQ(Get("db/b"), R"(int 7)");
  EXPECT_EQ(Get("db/c"), R"(double 0.5)");
  EXPECT_EQ(Get("memory/d"), R"(bool true)");
  EXPECT_EQ(State("settings").size(), 4U);
}

TEST_F(SettingsTest, TakesTheTypeThatIsGiven) {
  Control("settings.set", R"({"key":"db/a","type":"string","value":7})");
  EXPECT_EQ(Get("db/a"), R"(string "7")");
  Control("settings.set", R"({"key":"db/a","type":"double","value":"7"})");
  EXPECT_EQ(Get("db/a"), R"(double 7)");
}

TEST_F(SettingsTest, TellsEachChange) {
  const auto is_told = [this](const char* row) {
    const Json expected = base::ParseJson(row);
    WaitForEvent("changed", [&](const Json& data) { return data == expected; });
  };
  Control("settings.set", R"({"key":"db/a","value":"text"})");
  is_told(R"({"part":"settings","key":"db/a",
              "value":{"key":"db/a","type":"string","value":"text"}})");
  Control("settings.unset", R"({"key":"db/a"})");
  is_told(R"({"part":"settings","key":"db/a","value":null})");
}

TEST_F(SettingsTest, TellsAChangeByAnotherProcess) {
  const auto is_told = [this](const std::string& key) {
    WaitForEvent("changed",
                 [&](const Json& data) { return data.at("key").get<std::string>() == key; });
  };
  tvset::EventHub events;
  const tvset::Paths paths(state_folder());
  tvset::Settings other(events, paths);
  ASSERT_TRUE(other.SetString("db/plain", "x"));
  is_told("db/plain");
  ASSERT_TRUE(other.SetString("memory/a/new/folder", "x"));
  is_told("memory/a/new/folder");
  ASSERT_TRUE(other.SetString("memory/a/new/second", "x"));
  is_told("memory/a/new/second");
}

TEST_F(SettingsTest, RefusesWhatIsNone) {
  EXPECT_TRUE(Setting("db/a").is_null());
  EXPECT_THAT(ControlError("settings.unset", R"({"key":"a"})"), HasSubstr("begins with db/"));
  EXPECT_THAT(ControlError("settings.set", R"({"key":"db/../a","value":1})"),
              HasSubstr("begins with db/"));
  EXPECT_THAT(ControlError("settings.set", R"({"key":"db/a","type":"int","value":"x"})"),
              HasSubstr("did not take \"x\" as int"));
  EXPECT_THAT(ControlError("settings.set", R"({"key":"db/a","type":"word","value":"x"})"),
              HasSubstr("string, int, double and bool"));
  EXPECT_THAT(ControlError("settings.set", R"({"key":"db/a","value":[1]})"),
              HasSubstr("\"value\""));
  EXPECT_THAT(ControlError("settings.unset", R"({"key":"db/a"})"), HasSubstr("no setting db/a"));
}

TEST_F(SettingsTest, ForgetsEverythingAtAFactoryReset) {
  const std::string uuid = Orvane(7, "getUuid").at("result").get<std::string>();
  EXPECT_EQ(State("uuid"), uuid);
  Control("settings.set", R"({"key":"db/a","value":"text"})");
  Control("faults.set", R"({"function":"vconf_set_str","code":-1})");
  Control("features.set", R"({"key":"my.feature","type":"bool","text":"true"})");
  Control("factoryReset");
  const Json state = Control("state.get");
  EXPECT_TRUE(state.at("uuid").is_null());
  EXPECT_TRUE(state.at("settings").empty());
  EXPECT_TRUE(state.at("faults").empty());
  EXPECT_THAT(state.at("features").dump(), testing::Not(HasSubstr("my.feature")));
  WaitForEvent("settings", [](const Json& data) { return data.empty(); });
}

TEST_F(SettingsTest, LeavesTheApplicationRunningAfterAFactoryReset) {
  Control("factoryReset");
  EXPECT_EQ(Orvane(7, "getUuid").at("status"), "success");
  EXPECT_EQ(State("focused"), kApp);
}

}  // namespace
}  // namespace orvane::television
