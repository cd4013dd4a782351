// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "command.h"

namespace orvane::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

using HelpTest = CommandTest;

TEST_F(HelpTest, ListsTheVerbs) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"}, {}}) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exit_code, 0);
    const size_t verbs = outcome.out.find("\nVerbs:\n");
    ASSERT_NE(verbs, std::string::npos);
    const std::string listed =
        outcome.out.substr(verbs + 1, outcome.out.find("\n\n", verbs) - verbs);
    for (const char* verb : {"exec", "call", "get", "set"}) {
      EXPECT_THAT(listed, HasSubstr("\n  " + std::string(verb) + " "));
    }
  }
}

TEST_F(HelpTest, SaysWhereASetKeepsItsStateWithoutAFolder) {
  for (const char* verb : {"exec", "call", "get", "set"}) {
    const std::string help = Run({verb, "--help"}).out;
    for (const char* place : {"$ORVANE_STATE", "$XDG_STATE_HOME/orvane", "~/.local/state/orvane"}) {
      EXPECT_THAT(help, HasSubstr(place)) << verb;
    }
  }
}

TEST_F(HelpTest, ListsTheOptionsOfEachVerb) {
  for (const char* verb : {"exec", "call"}) {
    const Outcome outcome = Run({verb, "--help"});
    EXPECT_EQ(outcome.exit_code, 0);
    for (const char* option : {"--app", "--profile", "--state", "--fail", "--trace", "--log",
                               "--log-format", "--extension", "--timeout"}) {
      EXPECT_THAT(outcome.out, HasSubstr(option)) << verb;
    }
    EXPECT_THAT(outcome.out, HasSubstr(std::string("orvane ") + verb + " "));
  }
}

TEST_F(HelpTest, FitsATerminal) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                    {"exec", "--help"},
                                                    {"call", "--help"},
                                                    {"get", "--help"},
                                                    {"set", "--help"}}) {
    std::istringstream lines(Run(arguments).out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100U) << line;
  }
}

TEST_F(HelpTest, PrintsTheVersion) {
  EXPECT_THAT(Run({"--version"}).out, MatchesRegex("orvane [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(HelpTest, NamesAVerbThatItDoesNotKnow) {
  const Outcome outcome = Run({"exce", "a.js"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("there is no verb \"exce\". Did you mean \"exec\"?"));
}

TEST_F(HelpTest, NamesAnOptionThatItDoesNotKnow) {
  const Outcome outcome = Run({"call", "getVersion", "--verbose"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("--verbose"));
  EXPECT_THAT(outcome.err, HasSubstr("orvane call --help"));
}

TEST_F(HelpTest, AsksForWhatIsMissing) {
  EXPECT_THAT(Run({"exec"}).err, HasSubstr("SCRIPT is required"));
  EXPECT_THAT(Run({"call"}).err, HasSubstr("METHOD is required"));
}

}  // namespace
}  // namespace orvane::cli
