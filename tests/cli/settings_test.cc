// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <signal.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "command.h"
#include "tvset/set.h"

namespace orvane::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kProfilingKey = "memory/runningApps/performance_data";

using SettingsTest = CommandTest;

// A page that stays until it is told to go.
class StayingPage {
 public:
  StayingPage(const std::filesystem::path& state, const std::filesystem::path& script) {
    const std::string command = "echo $$; exec '" ORVANE_COMMAND "' exec --state '" +
                                state.string() + "' '" + script.string() + "'";
    pipe_ = popen(command.c_str(), "r");
    pid_ = std::atoi(ReadLine().c_str());
  }
  ~StayingPage() {
    kill(pid_, SIGTERM);
    pclose(pipe_);
  }
  StayingPage(const StayingPage&) = delete;
  StayingPage& operator=(const StayingPage&) = delete;

  // False: the page ends without printing it.
  bool ReadUntil(const std::string& wanted) {
    std::string line = ReadLine();
    while (!line.empty() && line != wanted) line = ReadLine();
    return !line.empty();
  }

 private:
  std::string ReadLine() {
    char line[256] = {};
    return std::fgets(line, sizeof(line), pipe_) == nullptr ? "" : line;
  }

  FILE* pipe_;
  pid_t pid_;
};

TEST_F(SettingsTest, GetPrintsWhatSetWrote) {
  EXPECT_EQ(Run({"set", "db/test/name", "some text"}).exit_code, 0);

  const Outcome outcome = Run({"get", "db/test/name"});

  EXPECT_EQ(outcome.out, "some text\n");
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
}

TEST_F(SettingsTest, GetPrintsTypeAndValueAsJson) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"int", "-42"}, "-42"},  {{"double", "0.5"}, "0.5"},   {{"bool", "true"}, "true"},
      {{"bool", "0"}, "false"}, {{"string", "42"}, "\"42\""},
  };
  for (const auto& [typed, json] : cases) {
    EXPECT_EQ(Run({"set", "--type", typed[0], "db/x", "--", typed[1]}).exit_code, 0) << json;
    EXPECT_EQ(Run({"get", "--json", "db/x"}).out,
              "{\"key\":\"db/x\",\"type\":\"" + typed[0] + "\",\"value\":" + json + "}\n");
  }
}

TEST_F(SettingsTest, GetPrintsWhatSetWouldTake) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"int", "-42"}, "-42\n"},      {{"double", "0.1"}, "0.1\n"}, {{"double", "1e-9"}, "1e-09\n"},
      {{"double", "1000"}, "1000\n"}, {{"bool", "1"}, "true\n"},    {{"bool", "false"}, "false\n"},
  };
  for (const auto& [typed, text] : cases) {
    const Outcome set = Run({"set", "--json", "--type", typed[0], "db/x", "--", typed[1]});
    EXPECT_THAT(set.out, HasSubstr("\"type\":\"" + typed[0] + "\"")) << set.err;
    EXPECT_EQ(Run({"get", "db/x"}).out, text);
  }
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

TEST_F(SettingsTest, GetPrintsNothingOfTheMemoryOfASetThatRunsNoMore) {
  const std::string script = Write("record.js", "dravelt.orvane.recordProfiling('start');");
  EXPECT_EQ(Run({"exec", script}).exit_code, 0);

  const Outcome outcome = Run({"get", kProfilingKey});

  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("no set runs on " + state().string()));
}

// The test's own process runs the set; the command is another one.
class RunningSetTest : public CommandTest {
 protected:
  RunningSetTest() { tvset::Set::Start({state(), "uhd"}); }
  ~RunningSetTest() override { tvset::Set::Stop(); }

  static tvset::Settings& settings() { return tvset::Set::Current().settings(); }
};

TEST_F(RunningSetTest, AndTheCommandSeeEachOthersValues) {
  settings().SetString("memory/a", "of the set");
  EXPECT_EQ(Run({"get", "memory/a"}).out, "of the set\n");

  const Outcome outcome = Run({"set", "memory/a", "of the command"});

  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_EQ(settings().GetString("memory/a"), "of the command");
}

TEST_F(RunningSetTest, IsNotRestartedByTheCommand) {
  settings().SetString("memory/a", "kept");
  Run({"get", "db/none"});
  Run({"set", "db/a", "x"});
  EXPECT_EQ(settings().GetString("memory/a"), "kept");
}

TEST_F(SettingsTest, ProfilingTextIsReadWhileThePageRuns) {
  Write("stay.js",
        "dravelt.orvane.recordProfiling('start', () => {\n"
        "  console.log('recorded');\n"
        "  setTimeout(() => {}, 50000);\n"
        "});\n");
  StayingPage page(state(), folder() / "stay.js");
  ASSERT_TRUE(page.ReadUntil("recorded\n"));
  EXPECT_EQ(Run({"get", kProfilingKey}).out, "start\n");
}

TEST_F(SettingsTest, SettingTheMemoryOfNoRunningSetWarns) {
  const Outcome outcome = Run({"set", "memory/a", "x"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.err, HasSubstr("no set runs on " + state().string()));
  EXPECT_THAT(Run({"set", "db/a", "x"}).err, IsEmpty());
}

}  // namespace
}  // namespace orvane::cli
