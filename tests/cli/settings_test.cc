// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "command.h"

namespace orvane::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kProfilingKey = "memory/runningApps/performance_data";

using SettingsTest = CommandTest;

TEST_F(SettingsTest, GetPrintsWhatSetWrote) {
  EXPECT_EQ(Run({"set", "db/test/name", "some text"}).exit_code, 0);

  const Outcome outcome = Run({"get", "db/test/name"});

  EXPECT_EQ(outcome.out, "some text\n");
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
}

TEST_F(SettingsTest, GetPrintsTheTypeAsJson) {
  EXPECT_EQ(Run({"set", "--type", "int", "file/test/count", "42"}).exit_code, 0);

  EXPECT_EQ(Run({"get", "--json", "file/test/count"}).out,
            "{\"key\":\"file\\/test\\/count\",\"type\":\"int\",\"value\":\"42\"}\n");
}

TEST_F(SettingsTest, GetOfWhatIsNotThereSaysWhereItLooked) {
  const Outcome outcome = Run({"get", kProfilingKey});

  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("there is no setting memory/runningApps/performance_data"));
  EXPECT_THAT(outcome.err, HasSubstr("--state"));
}

TEST_F(SettingsTest, KeyWithAnotherPrefixIsRefusedWithAnExample) {
  for (const char* verb : {"get", "set"}) {
    std::vector<std::string> arguments = {verb, "ram/x"};
    if (std::string(verb) == "set") arguments.emplace_back("1");
    const Outcome outcome = Run(arguments);

    EXPECT_EQ(outcome.exit_code, 2) << verb;
    EXPECT_THAT(outcome.err, HasSubstr("a key begins with db/, file/ or memory/")) << verb;
  }
}

TEST_F(SettingsTest, SetRefusesAValueOfAnotherType) {
  const Outcome outcome = Run({"set", "--type", "int", "db/test/count", "many"});

  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, HasSubstr("did not take \"many\" as int"));
}

TEST_F(SettingsTest, SetRefusesAnUnknownType) {
  EXPECT_EQ(Run({"set", "--type", "text", "db/test/name", "x"}).exit_code, 2);
}

TEST_F(SettingsTest, ProfilingTextIsEmptyOnceThePageHasClosed) {
  const std::string script = Write("record.js", "dravelt.orvane.recordProfiling('start');");
  EXPECT_EQ(Run({"exec", script}).exit_code, 0);

  const Outcome outcome = Run({"get", kProfilingKey});

  EXPECT_EQ(outcome.out, "\n");
  EXPECT_EQ(outcome.exit_code, 0);
}

}  // namespace
}  // namespace orvane::cli
