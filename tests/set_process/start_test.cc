// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using picojson::array;
using picojson::object;
using picojson::value;
using testing::HasSubstr;

using StartTest = SetProcessTest;

TEST_F(StartTest, ListsTheExtensionsWithTheirScripts) {
  const value started = Start();
  EXPECT_EQ(started.get("op").to_str(), "started");
  const value& catalogue = started.get("catalogue");
  ASSERT_EQ(catalogue.get<array>().size(), 2U);
  EXPECT_EQ(catalogue.get(0).get("name").to_str(), kTester);
  EXPECT_EQ(catalogue.get(1).get("name").to_str(), kOrvane);
  EXPECT_EQ(started.get("scripts").get(kTester).to_str(), "exports.here = true;");
  EXPECT_THAT(started.get("scripts").get(kOrvane).to_str(), HasSubstr("getVersion"));
}

TEST_F(StartTest, RunsTheApplicationInFrontAsThisProcess) {
  Start();
  const value app = State("applications").get(0);
  EXPECT_EQ(app.get("id").to_str(), kApp);
  EXPECT_EQ(app.get("version").to_str(), "1.2.0");
  EXPECT_EQ(app.get("stateName").to_str(), "FOREGROUND");
  EXPECT_EQ(app.get("pid").get<double>(), pid());
  EXPECT_EQ(State("focused").to_str(), kApp);
}

TEST_F(StartTest, SaysWhatIsWrongAndTakesAnotherStart) {
  const value failed = Start({{"profile", value("no-such-profile")}});
  EXPECT_EQ(failed.get("op").to_str(), "failed");
  EXPECT_THAT(failed.get("error").to_str(), HasSubstr("no-such-profile"));
  EXPECT_EQ(Start().get("op").to_str(), "started");
}

TEST_F(StartTest, RefusesOptionsOfAWrongType) {
  const value failed = Start({{"app", value("not an object")}});
  EXPECT_THAT(failed.get("error").to_str(),
              HasSubstr("\"app\" of \"options\" of the frame has to be"));
}

TEST_F(StartTest, RefusesAnExtensionThatCannotBeLoaded) {
  const value failed = Start({{"extensions", value(array{value("/no/such/lib.so")})}});
  EXPECT_EQ(failed.get("op").to_str(), "failed");
  EXPECT_THAT(failed.get("error").to_str(), HasSubstr("/no/such/lib.so"));
}

TEST_F(StartTest, TellsWhichExtensionItLoads) {
  Start();
  const value loading = WaitForOp("handling");
  EXPECT_EQ(loading.get("what").to_str(), "load");
  EXPECT_EQ(loading.get("name").to_str(), TESTER_EXTENSION);
  WaitForOp("handled");
}

TEST_F(StartTest, RefusesASecondStart) {
  Start();
  EXPECT_THAT(Start().get("error").to_str(), HasSubstr("runs already"));
}

TEST_F(StartTest, FailsPlatformFunctionsAsTheOptionsSay) {
  Start({{"faults", value(array{value("vconf_set_str=-3"), value("dlog_print=-1:once")})}});
  const value faults = State("faults");
  ASSERT_EQ(faults.get<array>().size(), 2U);
  EXPECT_EQ(faults.get(1).get("code").get<double>(), -3);
}

TEST_F(StartTest, RefusesAFaultThatIsNone) {
  const value failed = Start({{"faults", value(array{value("vconf_set_str")})}});
  EXPECT_THAT(failed.get("error").to_str(), HasSubstr("FUNCTION=CODE"));
}

TEST_F(StartTest, AnswersRequestsBeforeItWithWhatToDo) {
  Spawn();
  EXPECT_THAT(ControlError("state.get"), HasSubstr("send \"start\" first"));
}

}  // namespace
}  // namespace orvane::television
