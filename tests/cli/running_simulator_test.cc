// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The verbs that talk to a running simulator, with the real one.
#include <signal.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "command.h"

namespace orvane::cli {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

// `orvane run` without a browser, from its link on.
class Simulator {
 public:
  Simulator(const std::filesystem::path& state, const std::string& options) {
    const std::string command = "echo $$; exec '" ORVANE_COMMAND "' run '" EXAMPLES
                                "/tour' --no-open --no-watch --port 0 --state '" +
                                state.string() + "' " + options + " 2>&1";
    pipe_ = popen(command.c_str(), "r");
    pid_ = static_cast<pid_t>(std::strtol(ReadLine().c_str(), nullptr, 10));
    std::string line = ReadLine();
    while (!line.empty() && line.find("Ctrl-C") == std::string::npos) line = ReadLine();
    EXPECT_FALSE(line.empty()) << "it ended before it was ready";
  }
  ~Simulator() { End(); }
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  void End() {
    if (pipe_ == nullptr) return;
    kill(pid_, SIGINT);
    pclose(pipe_);
    pipe_ = nullptr;
  }

 private:
  std::string ReadLine() {
    char line[1024] = {};
    return std::fgets(line, sizeof(line), pipe_) == nullptr ? "" : line;
  }

  FILE* pipe_;
  pid_t pid_;
};

class RunningSimulatorTest : public CommandTest {};

TEST_F(RunningSimulatorTest, PressesKeysAndSaysWhereTheyWent) {
  const Simulator simulator(state(), "");
  const Outcome left = Run({"key", "left"});
  EXPECT_EQ(left.exit_code, 0) << left.err;
  EXPECT_THAT(left.out, HasSubstr("Left reaches OrvaneTour.Tour"));
  const Outcome red = Run({"key", "red", "--long", "--json"});
  EXPECT_EQ(red.exit_code, 1);
  EXPECT_THAT(red.out, HasSubstr(R"("reason":"notRegistered")"));
  const Outcome none = Run({"key", "nosuch"});
  EXPECT_EQ(none.exit_code, 1);
  EXPECT_THAT(none.err, HasSubstr("No key of the remote control is called \"nosuch\""));
}

TEST_F(RunningSimulatorTest, KnowsKeysByTheNamesThatPagesHave) {
  const Simulator simulator(state(), "");
  const std::pair<const char*, const char*> names[] = {
      {"ArrowLeft", "Left "},     {"enter", "Return "},     {"VolumeUp", "XF86AudioRaiseVolume "},
      {"ColorF0Red", "XF86Red "}, {"Menu", "XF86SysMenu "}, {"OneTouch1", "XF86OneTouch1 "}};
  for (const auto& [name, symbol] : names) {
    EXPECT_THAT(Run({"key", name}).out, testing::StartsWith(symbol)) << name;
  }
  EXPECT_THAT(Run({"key", "ArrowLeftt"}).err, HasSubstr("Did you mean \"ArrowLeft\""));
}

TEST_F(RunningSimulatorTest, WarnsOfAnotherOnItsFolder) {
  const Simulator first(state(), "");
  const Outcome second = Run({"run", EXAMPLES "/tour", "--no-open", "--extension", "/no/such.so"});
  EXPECT_EQ(second.exit_code, 2);
  EXPECT_THAT(second.err,
              HasSubstr("warning: a simulator runs on " + state().string() + " already"));
}

TEST_F(RunningSimulatorTest, ListsItsApplications) {
  const Simulator simulator(state(), "");
  EXPECT_THAT(Run({"apps"}).out, ContainsRegex("\\* OrvaneTour.Tour +FOREGROUND +Orvane tour"));
}

TEST_F(RunningSimulatorTest, MakesFunctionsFail) {
  const Simulator simulator(state(), "--fail dlog_print=-3");
  EXPECT_EQ(Run({"fail"}).out, "dlog_print -3 always\n");
  EXPECT_EQ(Run({"fail", "vconf_set_str", "-7", "--once"}).exit_code, 0);
  EXPECT_EQ(Run({"fail"}).out, "dlog_print -3 always\nvconf_set_str -7 once\n");
  EXPECT_EQ(Run({"fail", "--clear"}).exit_code, 0);
  EXPECT_EQ(Run({"fail"}).out, "");
  const Outcome wrong = Run({"fail", "dlog_prin", "-1"});
  EXPECT_EQ(wrong.exit_code, 1);
  EXPECT_THAT(wrong.err, HasSubstr("did you mean"));
  EXPECT_EQ(Run({"fail", "--clear", "dlog_prin"}).exit_code, 1);
  EXPECT_EQ(Run({"fail", "--once"}).exit_code, 2);
}

TEST_F(RunningSimulatorTest, SharesItsSettings) {
  const Simulator simulator(state(), "");
  EXPECT_EQ(Run({"set", "memory/a", "x"}).err, "");
  EXPECT_EQ(Run({"get", "memory/a"}).out, "x\n");
}

TEST_F(RunningSimulatorTest, PrintsItsLogUntilItEnds) {
  Simulator simulator(state(), "");
  EXPECT_EQ(Run({"log"}).exit_code, 0);
  EXPECT_EQ(Run({"log", "--json", "--level", "error"}).exit_code, 0);
  EXPECT_EQ(Run({"log", "--level", "WARNING"}).exit_code, 0);
  simulator.End();
  EXPECT_EQ(Run({"log", "-f"}).exit_code, 4);
}

TEST_F(RunningSimulatorTest, IsFollowedUntilItEnds) {
  Simulator simulator(state(), "");
  FILE* const log =
      popen(("'" ORVANE_COMMAND "' log -f --state '" + state().string() + "'").c_str(), "r");
  char line[4096];
  ASSERT_NE(std::fgets(line, sizeof(line), log), nullptr);  // the library has logged its start
  simulator.End();
  while (std::fgets(line, sizeof(line), log) != nullptr) {
  }
  EXPECT_EQ(pclose(log), 0);
}

TEST_F(RunningSimulatorTest, TakesAPictureOfAFreshPage) {
  const Simulator simulator(state(), "");
  const Outcome outcome = Run({"screenshot", "shot.png"});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  std::ifstream file(folder() / "shot.png", std::ios::binary);
  std::string head(24, '\0');
  file.read(head.data(), static_cast<std::streamsize>(head.size()));
  // A PNG's header, with the width and the height of the screen: 1920 and 1080.
  EXPECT_EQ(head.substr(1, 3), "PNG");
  EXPECT_EQ(head.substr(16), std::string("\0\0\x07\x80\0\0\x04\x38", 8));
}

TEST_F(RunningSimulatorTest, HasNoPictureWithoutABrowser) {
  ASSERT_EQ(setenv("ORVANE_BROWSER", "/no/such/browser", 1), 0);
  const Simulator simulator(state(), "");
  ASSERT_EQ(unsetenv("ORVANE_BROWSER"), 0);
  const Outcome outcome = Run({"screenshot", "shot.png"});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, HasSubstr("/no/such/browser"));
  EXPECT_FALSE(std::filesystem::exists(folder() / "shot.png"));
}

TEST_F(RunningSimulatorTest, LeavesNothingToBeFoundWhenItEnds) {
  {
    const Simulator simulator(state(), "");
    EXPECT_TRUE(std::filesystem::exists(state() / "run/simulator.json"));
  }
  EXPECT_FALSE(std::filesystem::exists(state() / "run/simulator.json"));
  EXPECT_EQ(Run({"apps"}).exit_code, 4);
}

}  // namespace
}  // namespace orvane::cli
