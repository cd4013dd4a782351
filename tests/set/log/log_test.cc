// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/log.h"

#include <sys/wait.h>

#include <cstring>
#include <ctime>
#include <string>
#include <thread>

#include <dlog.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

class LogTest : public SetTest {
 protected:
  static LogBuffer& log() { return set().log(); }
};

TEST_F(LogTest, LineCarriesWhatWasWritten) {
  timespec before{};
  clock_gettime(CLOCK_REALTIME, &before);
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "%s-%d", "text", 7), 6);
  const std::vector<LogLine> lines = log().lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].text, "text-7");
  EXPECT_EQ(lines[0].tag, "TAG");
  EXPECT_EQ(lines[0].priority, DLOG_INFO);
  EXPECT_EQ(lines[0].log_id, LOG_ID_MAIN);
  EXPECT_EQ(lines[0].pid, getpid());
  EXPECT_EQ(lines[0].tid, gettid());
  EXPECT_GE(lines[0].time_ns, int64_t{before.tv_sec} * 1'000'000'000 + before.tv_nsec);
}

TEST_F(LogTest, ApplicationsCallWritesToTheirLog) {
  EXPECT_EQ(dlog_print(DLOG_WARN, "TAG", "text"), 4);
  EXPECT_EQ(log().lines().at(0).log_id, LOG_ID_APPS);
}

TEST_F(LogTest, EmptyTextIsALine) {
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_INFO, "", "%s", ""), 0);
  EXPECT_EQ(log().lines().size(), 1u);
}

TEST_F(LogTest, BadTagLogAndPriorityAreRefused) {
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_INFO, nullptr, "text"), -22);
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", nullptr), -22);
  EXPECT_EQ(__dlog_print(LOG_ID_INVALID, DLOG_INFO, "TAG", "text"), -22);
  EXPECT_EQ(__dlog_print(LOG_ID_MAX, DLOG_INFO, "TAG", "text"), -22);
  for (const int priority : {-1, 0, 1, 9, 100}) {
    EXPECT_EQ(__dlog_print(LOG_ID_MAIN, priority, "TAG", "text"), -22) << priority;
  }
  EXPECT_TRUE(log().lines().empty());
}

TEST_F(LogTest, EveryPriorityIsTaken) {
  for (int priority = DLOG_VERBOSE; priority <= DLOG_SILENT; ++priority) {
    EXPECT_EQ(__dlog_print(LOG_ID_MAIN, priority, "TAG", "text"), 4) << priority;
  }
}

TEST_F(LogTest, FatalLineLeavesTheProcessAlive) {
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_FATAL, "TAG", "text"), 4);
}

TEST_F(LogTest, FatalLineEndsTheProcessWhenThePolicySaysSo) {
  ::testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_DEATH(
      {
        log().set_policy(LogPolicy{true, true, true});
        __dlog_print(LOG_ID_MAIN, DLOG_FATAL, "TAG", "text");
      },
      "");
}

TEST_F(LogTest, LongTextIsCut) {
  const std::string text(10'000, 'x');
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "%s", text.c_str()), 4075);
  EXPECT_EQ(log().lines().at(0).text, text.substr(0, 4075));
}

TEST_F(LogTest, ClosedPlatformLogStillTakesApplicationLines) {
  log().set_policy(LogPolicy{false, true, false});
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text"), -1);
  EXPECT_EQ(__dlog_print(LOG_ID_SYSTEM, DLOG_INFO, "TAG", "text"), -1);
  EXPECT_EQ(dlog_print(DLOG_INFO, "TAG", "text"), 4);
}

TEST_F(LogTest, WithoutDebugModeDebugLinesAreRefused) {
  log().set_policy(LogPolicy{true, false, false});
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_DEBUG, "TAG", "text"), -22);
  EXPECT_EQ(__dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text"), 4);
}

TEST_F(LogTest, NewestLinesStayWhenTheBufferIsFull) {
  log().set_capacity(10'000);
  for (int i = 0; i < 5000; ++i) {
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "%d %s", i,
                 std::string(static_cast<size_t>(i) % 97, 'x').c_str());
  }
  const std::vector<LogLine> lines = log().lines();
  EXPECT_EQ(log().written(), 5000u);
  EXPECT_EQ(log().dropped() + lines.size(), 5000u);
  EXPECT_GT(lines.size(), 60u);
  for (size_t i = 0; i < lines.size(); ++i) {
    const size_t number = 5000 - lines.size() + i;
    EXPECT_EQ(lines[i].text, std::to_string(number) + " " + std::string(number % 97, 'x'));
  }
}

TEST_F(LogTest, SmallestBufferHoldsTheLongestLine) {
  log().set_capacity(0);
  const std::string tag(1000, 't');
  const std::string text(5000, 'x');
  for (int i = 0; i < 3; ++i) __dlog_print(LOG_ID_MAIN, DLOG_INFO, tag.c_str(), "%s", text.c_str());
  ASSERT_EQ(log().lines().size(), 1u);
  EXPECT_EQ(log().lines()[0].tag.size(), 255u);
  EXPECT_EQ(log().lines()[0].text.size(), 4075u);
}

TEST_F(LogTest, ClearForgetsLinesAndCounts) {
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
  log().Clear();
  EXPECT_TRUE(log().lines().empty());
  EXPECT_EQ(log().written(), 0u);
}

TEST_F(LogTest, LineOfAForkedProcessCarriesItsNumber) {
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "parent");
  const pid_t child = fork();
  if (child == 0) {
    __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "child");
    _exit(log().lines().back().pid == getpid() && log().lines().back().tid == gettid() ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST_F(LogTest, LinesOfSeveralThreadsAreWholeAndInTheOrderOfEach) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([thread] {
      for (int i = 0; i < 500; ++i) __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "%d %d", thread, i);
    });
  }
  for (std::thread& thread : threads) thread.join();
  int next[4] = {};
  for (const LogLine& line : log().lines()) {
    int thread = -1;
    int number = -1;
    ASSERT_EQ(std::sscanf(line.text.c_str(), "%d %d", &thread, &number), 2) << line.text;
    EXPECT_EQ(number, next[thread]++);
  }
  for (const int count : next) EXPECT_EQ(count, 500);
}

TEST(LogWithoutSetTest, LoggingStartsNoSet) {
  Set::Stop();
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
  EXPECT_FALSE(Set::running());
}

}  // namespace
}  // namespace tvset::testing
