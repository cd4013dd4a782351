// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "command.h"

namespace orvane::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

class CallTest : public CommandTest {
 protected:
  void ExpectResult(const std::vector<std::string>& call, const std::string& json) {
    const Outcome outcome = Call(call);
    EXPECT_EQ(outcome.out, json + "\n");
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_THAT(outcome.err, IsEmpty());
  }

  void ExpectError(const std::vector<std::string>& call, const std::string& json) {
    const Outcome outcome = Call(call);
    EXPECT_EQ(outcome.out, json + "\n");
    EXPECT_EQ(outcome.exit_code, 1);
  }

  Outcome Call(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "call");
    return Run(arguments);
  }
};

TEST_F(CallTest, PrintsTheVersionAsJson) { ExpectResult({"getVersion"}, "\"3.9\""); }

TEST_F(CallTest, PrintsTheSameUuidTwice) {
  const Outcome first = Call({"getUuid"});
  const Outcome second = Call({"getUuid"});

  EXPECT_THAT(first.out, MatchesRegex("\"[0-9a-f-]{36}\"\n"));
  EXPECT_EQ(second.out, first.out);
  EXPECT_EQ("\"" + ReadText(state() / "apps_rw/OrvaneDesk/data/uuid") + "\"\n", first.out);
}

TEST_F(CallTest, PrintsNullForAMethodWithoutAResult) {
  ExpectResult({"generateKey", "\"VolumeUp\""}, "null");
}

TEST_F(CallTest, PrintsWhatTheCallbackOfALaterAnswerGot) {
  ExpectResult({"setScreenSaver", "1"}, "null");
  EXPECT_THAT(Call({"getSystemStat", "\"CPU\""}).out, StartsWith("{\"cpuUsage\":"));
}

TEST_F(CallTest, PrintsWhatTheErrorCallbackGot) {
  ExpectError({"--fail", "vconf_set_str=-1", "recordProfiling", "\"a label\""},
              R"({"code":9999,"name":"UnknownError","message":"Fail to record profile"})");
}

TEST_F(CallTest, PrintsAnExceptionAsJson) {
  ExpectError(
      {"setEpopAppWindow", "7"},
      R"({"code":22,"name":"InvalidValuesError","message":"Invalid value passed for epopPosition parameter"})");
}

TEST_F(CallTest, TakesListsObjectsNumbersAndLiterals) {
  ExpectResult({"registerKey", "[\"ColorF0Red\", 5]"}, "true");
  ExpectResult({"registerKey", "[]"}, "false");
  ExpectResult({"setEpopAppWindow", "-1", "true"}, "true");
  ExpectResult({"setIMEPosition", "\"10%\"", "null", "\"TOP_LEFT\""}, "true");
}

TEST_F(CallTest, TakesOptionsAfterANegativeNumber) {
  const Outcome outcome = Call({"setEpopAppWindow", "-1", "true", "--trace"});
  EXPECT_EQ(outcome.out, "true\n");
  EXPECT_THAT(outcome.err, HasSubstr("OrvaneManager_setEpopAppWindow"));
}

TEST_F(CallTest, SaysWhichArgumentIsNoJson) {
  const Outcome outcome = Call({"setIMEPosition", "\"10%\"", "20px"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("argument 2 of setIMEPosition is not JSON: 20px"));
}

TEST_F(CallTest, ListsNearNamesForAnUnknownMethod) {
  const Outcome outcome = Call({"getVerison"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("Did you mean \"getVersion\"?"));
  EXPECT_THAT(outcome.err, HasSubstr("\n  unregisterKey\n"));
}

TEST_F(CallTest, RefusesNamesThatEveryObjectHas) {
  for (const char* name : {"constructor", "toString", "__proto__", "OrvaneTarget", ""}) {
    EXPECT_EQ(Call({name}).exit_code, 2) << name;
  }
}

TEST_F(CallTest, KeepsTheConsoleOutOfTheResult) {
  const Outcome outcome = Call({"--console", "getVersion"});
  EXPECT_EQ(outcome.out, "\"3.9\"\n");
  EXPECT_EQ(outcome.err, "console: [Orvane] OrvaneManager_getVersion : 3.9\n");
}

TEST_F(CallTest, CallsEveryMethodThatAnswersLaterWithCallbacks) {
  const std::string app = WriteApplication(
      "<tizen:privilege name=\"http://tizen.org/privilege/internal/default/platform\"/>");
  ExpectResult({"setAuxHint", R"({"key":"k","value":"v"})", "--app", app}, "null");
  ExpectResult({"resetProfiling"}, "null");
}

TEST_F(CallTest, ExplainsARefusedPrivilegeByTheMissingLine) {
  const Outcome outcome =
      Call({"unregisterKey", "[\"ColorF0Red\"]", "--app", WriteApplication("")});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("\"SecurityError\""));
  EXPECT_THAT(outcome.err,
              HasSubstr("<tizen:privilege name=\"http://tizen.org/privilege/tv.inputdevice\"/>"));
}

TEST_F(CallTest, PointsTheScratchApplicationToAppWhenAPrivilegeIsMissing) {
  const Outcome outcome = Call({"setAuxHint", R"({"key":"k","value":"v"})"});
  EXPECT_THAT(outcome.err, HasSubstr("<tizen:privilege name="));
  EXPECT_THAT(outcome.err, HasSubstr("--app"));
}

}  // namespace
}  // namespace orvane::cli
