// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

class SetControlTest : public SetProcessTest {
 protected:
  SetControlTest() { Start(); }
  std::string Reason(const std::string& parameters) {
    return Control("keys.press", parameters).at("reason").get<std::string>();
  }
};

TEST_F(SetControlTest, RoutesKeysByTheSetsRules) {
  EXPECT_EQ(Reason(R"({"name":"Left"})"), "mandatory");
  EXPECT_EQ(Reason(R"({"name":"XF86Red"})"), "notRegistered");
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  EXPECT_EQ(Reason(R"({"name":"XF86Red"})"), "registered");
  Runtime("sync", "dravelt://orvane/RegisterKeyInSpecialMode", "XF86Red,5");
  EXPECT_EQ(Reason(R"({"name":"XF86Red"})"), "specialGrab");
  Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red");
  Control("applications.focus", R"({"id":""})");
  EXPECT_EQ(Reason(R"({"name":"XF86Red"})"), "grabbedByOther");
  EXPECT_EQ(Reason(R"({"name":"Left"})"), "noFocus");
}

TEST_F(SetControlTest, KnowsAKeyByItsShortName) {
  for (const char* name : {"XF86Red", "red", "Red", "xf86RED"}) {
    EXPECT_EQ(Control("keys.press", std::string(R"({"name":")") + name + "\"}").at("key_name"),
              "XF86Red");
  }
  EXPECT_EQ(Control("keys.press", R"({"name":"enter"})").at("key_name"), "Return");
}

TEST_F(SetControlTest, NamesKeysThatAreNear) {
  EXPECT_THAT(ControlError("keys.press", R"({"name":"XF86Rad"})"), HasSubstr("\"XF86Red\""));
  EXPECT_THAT(ControlError("keys.press", R"({"name":5})"), HasSubstr("\"name\""));
  EXPECT_THAT(ControlError("keys.press", R"({"name":"Left","long":1})"),
              HasSubstr("\"long\" of the parameters of keys.press has to be true or false"));
}

TEST_F(SetControlTest, ListsTheKeysOfTheRemoteControl) {
  const Json keys = State("keys");
  EXPECT_GT(keys.size(), 100U);
  EXPECT_EQ(keys.at(0).dump(), R"({"hardwareCode":113,"keyCode":37,"mandatory":true,"name":"Left",)"
                               R"("pageNames":["ArrowLeft"]})");
}

TEST_F(SetControlTest, BecomesASetOfAnotherProfile) {
  EXPECT_EQ(State("profile").at("name"), "uhd");
  EXPECT_EQ(State("panel").dump(), R"({"height":2160,"width":3840})");
  Control("profile.use", R"({"profile":"fhd"})");
  EXPECT_EQ(State("profile").at("name"), "fhd");
  EXPECT_EQ(State("profile").at("profiles").dump(), R"(["fhd","uhd"])");
  EXPECT_EQ(WaitForEvent("panel").dump(), R"({"height":1080,"width":1920})");
  EXPECT_EQ(WaitForEvent("profile").at("name"), "fhd");
  EXPECT_EQ(Orvane(7, "setEpopAppWindow").at("status"), "error");
  EXPECT_THAT(ControlError("profile.use", R"({"profile":"none"})"), HasSubstr("none"));
}

TEST_F(SetControlTest, ChangesFeaturesForTheLibraryAtOnce) {
  Control("features.set",
          R"({"key":"com.korvale/featureconf/ime.resolution","type":"int","text":"0"})");
  EXPECT_EQ(Orvane(7, "getIMEResolution").at("result"), 0);
  Control("features.remove", R"({"key":"com.korvale/featureconf/ime.resolution"})");
  EXPECT_EQ(Orvane(7, "getIMEResolution").at("status"), "error");
  EXPECT_THAT(ControlError("features.set", R"({"key":"a","type":"word","text":""})"),
              HasSubstr("bool, int, double and string"));
  EXPECT_THAT(ControlError("features.set", R"({"key":"a","type":"int","text":"1","group":"mine"})"),
              HasSubstr(R"("platform" or "custom")"));
}

TEST_F(SetControlTest, FixesTheKeyboardInItsPlace) {
  Control("inputMethod.setDynamic", R"({"dynamic":false})");
  EXPECT_EQ(Runtime("sync", "dravelt://orvane/setIMEPosition", "1,2,3"), "notsupportederror");
  Control("inputMethod.setDynamic", R"({"dynamic":true})");
  EXPECT_EQ(Runtime("sync", "dravelt://orvane/setIMEPosition", "1,2,3"), "success");
  EXPECT_THAT(ControlError("inputMethod.setDynamic"), HasSubstr("\"dynamic\""));
}

TEST_F(SetControlTest, ReadsTheFiguresOfTheProcess) {
  const Json memory = Control("stat.read", R"({"resource":"MEMORY"})");
  EXPECT_GT(memory.at("value").get<double>(), 0);
  EXPECT_EQ(memory.at("value"), memory.at("memoryUsage").get<double>());
  EXPECT_GE(Control("stat.read", R"({"resource":"CPU"})").at("value").get<double>(), 1);
  EXPECT_THAT(ControlError("stat.read", R"({"resource":"DISK"})"), HasSubstr("CPU and MEMORY"));
}

TEST_F(SetControlTest, SaysWhenTheFiguresCannotBeRead) {
  Control("faults.set", R"({"function":"file:qm_memstat","code":2})");
  EXPECT_THAT(ControlError("stat.read", R"({"resource":"MEMORY"})"),
              HasSubstr("Memory proc file retrieval error"));
}

}  // namespace
}  // namespace orvane::television
