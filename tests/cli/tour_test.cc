// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The sample application calls every method, and each one answers.
#include <sstream>

#include "command.h"

namespace orvane::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class TourTest : public CommandTest {
 protected:
  // The table that the tour ends with.
  static std::string Table(const Outcome& outcome) {
    const size_t begin = outcome.out.find("What each method of dravelt.orvane answered");
    return begin == std::string::npos ? "" : outcome.out.substr(begin);
  }
};

TEST_F(TourTest, ShowsAnAnswerOfEachOfTheMethods) {
  const Outcome outcome = Run({"exec", "--app", EXAMPLES "/tour", EXAMPLES "/tour/tour.js"});

  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  for (const char* method : {"generateKey",
                             "getAppState",
                             "getForegroundAppId",
                             "getSpecialSupportedKeys",
                             "getSystemStat",
                             "getUuid",
                             "getVersion",
                             "recordProfiling",
                             "registerKey",
                             "registerKeyInSpecialMode",
                             "requestTvContextTask",
                             "resetProfiling",
                             "setAppFocus",
                             "setAuxHint",
                             "setEpopAppWindow",
                             "setIMEPosition",
                             "setIMERecommendedWords",
                             "setIMERecommendedWordsType",
                             "setScreenSaver",
                             "setWindowStackMode",
                             "unregisterKey"}) {
    EXPECT_THAT(Table(outcome), HasSubstr(std::string("\n") + method + "(")) << method;
  }
  EXPECT_THAT(Table(outcome), HasSubstr("->  \"OrvaneTour.Tour\"\n"));
}

TEST_F(TourTest, HoldsEveryPrivilegeThatItNeeds) {
  const Outcome outcome = Run({"exec", "--app", EXAMPLES "/tour", EXAMPLES "/tour/tour.js"});
  EXPECT_THAT(Table(outcome), Not(HasSubstr("SecurityError")));
  EXPECT_THAT(Table(outcome), Not(HasSubstr("metadata")));
  EXPECT_THAT(outcome.err, Not(HasSubstr("refused")));
}

TEST_F(TourTest, RunsAsTheScratchApplicationToo) {
  const Outcome outcome = Run({"exec", EXAMPLES "/tour/tour.js"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(Table(outcome), HasSubstr("refused: SecurityError (code 18)"));
}

}  // namespace
}  // namespace orvane::cli
