// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// --trace and --log.
#include "command.h"

namespace orvane::cli {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

using OutputTest = CommandTest;

TEST_F(OutputTest, TracesANativeMessageWithItsReplyAndItsTime) {
  const std::string trace = Run({"call", "getVersion", "--trace"}).err;
  EXPECT_THAT(trace, HasSubstr("-> native sync   dravelt.orvane  "
                               R"({"cmd":"OrvaneManager_getVersion","args":{}})"));
  EXPECT_THAT(trace, ContainsRegex("[0-9]+\\.[0-9] us  <- native sync   dravelt.orvane  .*3\\.9"));
}

TEST_F(OutputTest, TracesALaterAnswer) {
  const std::string trace = Run({"call", "setScreenSaver", "1", "--trace"}).err;
  EXPECT_THAT(trace, ContainsRegex("<- native post .*\"callbackId\""));
}

TEST_F(OutputTest, TracesEachKindOfRuntimeMessage) {
  const std::string app = WriteApplication(
      "<tizen:privilege name=\"http://tizen.org/privilege/internal/default/platform\"/>\n"
      "<tizen:privilege name=\"http://tizen.org/privilege/tv.inputdevice\"/>");
  const std::string trace = Run({"exec", "--app", app, "--trace", "-"},
                                "dravelt.orvane.registerKey(['ColorF0Red']);\n"
                                "dravelt.orvane.setIMERecommendedWords(['a', 'b']);\n"
                                "dravelt.orvane.setAuxHint({ key: 'k', value: 'v' });\n")
                                .err;
  EXPECT_THAT(trace, HasSubstr("-> runtime sync  tizen://api/inputdevice/registerKey  XF86Red\n"));
  EXPECT_THAT(trace,
              ContainsRegex("<- runtime sync  tizen://api/inputdevice/registerKey  success"));
  EXPECT_THAT(trace, HasSubstr("-> runtime plain dravelt://orvane/setIMERecommendedWords  a,b\n"));
  EXPECT_THAT(trace, HasSubstr("-> runtime async dravelt://orvane/setAuxHint  k,v\n"));
  EXPECT_THAT(trace,
              HasSubstr("<- runtime async dravelt://orvane/setAuxHint  {\"status\":\"success\"}"));
}

TEST_F(OutputTest, KeepsControlCharactersOutOfTheTrace) {
  const std::string trace =
      Run({"exec", "--trace", "-"}, "dravelt.orvane.setIMERecommendedWords(['\\u001b[2J\\n']);")
          .err;
  EXPECT_THAT(trace, HasSubstr("\\x1b[2J\\x0a"));
  EXPECT_THAT(trace, Not(HasSubstr("\x1b")));
}

TEST_F(OutputTest, PrintsNoLogUnlessAsked) {
  EXPECT_THAT(Run({"call", "getVersion"}).err, IsEmpty());
}

TEST_F(OutputTest, PrintsTheLogFromALevelOn) {
  const std::string log = Run({"call", "getVersion", "--log", "debug"}).err;
  EXPECT_THAT(log, ContainsRegex("D/QM_WEBAPI\\( *[0-9]+\\): .*Version of plugin: 3\\.9"));
  EXPECT_THAT(Run({"call", "getVersion", "--log", "error"}).err,
              Not(HasSubstr("Version of plugin")));
}

TEST_F(OutputTest, PrintsTheLogOfTheTagsAskedFor) {
  const std::string log = Run({"call", "getVersion", "--log", "QM_WEBAPI:D,WEBAPI_PLUGINS:F"}).err;
  EXPECT_THAT(log, HasSubstr("Version of plugin"));
  EXPECT_THAT(log, Not(HasSubstr("WEBAPI_PLUGINS")));
}

TEST_F(OutputTest, PrintsTheLogInTheFormAskedFor) {
  const std::string log =
      Run({"call", "getVersion", "--log", "QM_WEBAPI:D", "--log-format", "threadtime"}).err;
  EXPECT_THAT(log,
              ContainsRegex("[0-9]:[0-9.]+[+-][0-9]+ D/QM_WEBAPI *\\(P *[0-9]+, T *[0-9]+\\): "));
}

TEST_F(OutputTest, RefusesLogOptionsThatMeanNothing) {
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{"--log", "QM_WEBAPI:X"},
        std::vector<std::string>{"--log", "info", "--log-format", "pretty"}}) {
    std::vector<std::string> arguments = {"call", "getVersion"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_THAT(outcome.err, HasSubstr("--log"));
    EXPECT_THAT(outcome.out, IsEmpty());
  }
}

}  // namespace
}  // namespace orvane::cli
