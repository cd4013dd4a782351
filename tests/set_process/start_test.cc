// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

using StartTest = SetProcessTest;

TEST_F(StartTest, ListsTheExtensionsWithTheirScripts) {
  const Json started = Start();
  EXPECT_EQ(started.at("op"), "started");
  const Json& catalogue = started.at("catalogue");
  ASSERT_EQ(catalogue.size(), 2U);
  EXPECT_EQ(catalogue.at(0).at("name"), kTester);
  EXPECT_EQ(catalogue.at(1).at("name"), kOrvane);
  EXPECT_EQ(started.at("scripts").at(kTester), "exports.here = true;");
  EXPECT_THAT(started.at("scripts").at(kOrvane).get<std::string>(), HasSubstr("getVersion"));
}

TEST_F(StartTest, RunsTheApplicationInFrontAsThisProcess) {
  Start();
  const Json app = State("applications").at(0);
  EXPECT_EQ(app.at("id"), kApp);
  EXPECT_EQ(app.at("version"), "1.2.0");
  EXPECT_EQ(app.at("stateName"), "FOREGROUND");
  EXPECT_EQ(app.at("pid"), pid());
  EXPECT_EQ(State("focused"), kApp);
}

TEST_F(StartTest, SaysWhatIsWrongAndTakesAnotherStart) {
  const Json failed = Start({{"profile", "no-such-profile"}});
  EXPECT_EQ(failed.at("op"), "failed");
  EXPECT_THAT(failed.at("error").get<std::string>(), HasSubstr("no-such-profile"));
  EXPECT_EQ(Start().at("op"), "started");
}

TEST_F(StartTest, RefusesOptionsOfAWrongType) {
  const Json failed = Start({{"app", "not an object"}});
  EXPECT_THAT(failed.at("error").get<std::string>(),
              HasSubstr("\"app\" of \"options\" of the frame has to be"));
}

TEST_F(StartTest, RefusesAnExtensionThatCannotBeLoaded) {
  const Json failed = Start({{"extensions", Json::array({"/no/such/lib.so"})}});
  EXPECT_EQ(failed.at("op"), "failed");
  EXPECT_THAT(failed.at("error").get<std::string>(), HasSubstr("/no/such/lib.so"));
}

TEST_F(StartTest, NotesWhichExtensionItLoads) {
  Start();
  EXPECT_EQ(WaitForMessage("load").name, kOrvane);  // the last
}

TEST_F(StartTest, RefusesASecondStart) {
  Start();
  EXPECT_THAT(Start().at("error").get<std::string>(), HasSubstr("runs already"));
}

TEST_F(StartTest, FailsPlatformFunctionsAsTheOptionsSay) {
  Start({{"faults", Json::array({"vconf_set_str=-3", "dlog_print=-1:once"})}});
  const Json faults = State("faults");
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults.at(1).at("code"), -3);
}

TEST_F(StartTest, RefusesAFaultThatIsNone) {
  const Json failed = Start({{"faults", Json::array({"vconf_set_str"})}});
  EXPECT_THAT(failed.at("error").get<std::string>(), HasSubstr("FUNCTION=CODE"));
}

TEST_F(StartTest, AnswersRequestsBeforeItWithWhatToDo) {
  Spawn();
  EXPECT_THAT(ControlError("state.get"), HasSubstr("send \"start\" first"));
}

}  // namespace
}  // namespace orvane::television
