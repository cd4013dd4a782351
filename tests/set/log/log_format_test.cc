// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/log_format.h"

#include <time.h>

#include <cstdlib>
#include <string>

#include <dlog.h>
#include <gtest/gtest.h>

#include "tvset/error.h"

namespace tvset::testing {
namespace {

class LogFormatTest : public ::testing::Test {
 protected:
  LogFormatTest() {
    setenv("TZ", "UTC0", 1);
    tzset();
  }

  // 20 November 2015, 23:59:35.123999.
  static LogLine Line(const std::string& text) {
    return LogLine{1'448'063'975'123'999'999, 1234, 1235, LOG_ID_MAIN, DLOG_INFO, "TAG", text};
  }
};

TEST_F(LogFormatTest, PrintsEachFormAsTheToolDoes) {
  const LogLine line = Line("msg");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kBrief), "I/TAG     ( 1234): msg");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kTag), "I/TAG     : msg");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kProcess), "I( 1234) msg  (TAG)");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kThread), "I(P 1234, T 1235) msg");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kRaw), "msg");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kTime),
            "11-20 23:59:35.123+0000 I/TAG     ( 1234): msg");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kThreadTime),
            "11-20 23:59:35.123+0000 I/TAG     (P 1234, T 1235): msg");
  EXPECT_EQ(FormatLogLine(line, LogFormat::kLong),
            "[ 11-20 23:59:35.123 I/TAG      P 1234, T 1235]\nmsg\n");
}

TEST_F(LogFormatTest, KernelTimeCountsFromTheMachinesStart) {
  timespec now{};
  timespec uptime{};
  clock_gettime(CLOCK_REALTIME, &now);
  clock_gettime(CLOCK_MONOTONIC, &uptime);
  LogLine line = Line("msg");
  line.time_ns = int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
  const std::string text = FormatLogLine(line, LogFormat::kKernelTime);
  EXPECT_NEAR(std::stod(text), static_cast<double>(uptime.tv_sec), 2.0);
  EXPECT_EQ(text.substr(text.find('+')), "+0000 I/TAG     (P 1234, T 1235): msg");
}

TEST_F(LogFormatTest, TimeIsLocal) {
  setenv("TZ", "XYZ-05:30", 1);
  tzset();
  EXPECT_EQ(FormatLogLine(Line("msg"), LogFormat::kTime),
            "11-21 05:29:35.123+0530 I/TAG     ( 1234): msg");
}

TEST_F(LogFormatTest, EachLineOfATextHasThePrefix) {
  EXPECT_EQ(FormatLogLine(Line("one\ntwo"), LogFormat::kTag), "I/TAG     : one\nI/TAG     : two");
  EXPECT_EQ(FormatLogLine(Line("one\n\ntwo\n"), LogFormat::kProcess),
            "I( 1234) one  (TAG)\nI( 1234)   (TAG)\nI( 1234) two  (TAG)");
  EXPECT_EQ(FormatLogLine(Line("one\ntwo"), LogFormat::kLong),
            "[ 11-20 23:59:35.123 I/TAG      P 1234, T 1235]\none\ntwo\n");
}

TEST_F(LogFormatTest, EmptyTextIsAPrefix) {
  EXPECT_EQ(FormatLogLine(Line(""), LogFormat::kTag), "I/TAG     : ");
}

TEST_F(LogFormatTest, LongTagIsKeptUpToThePrefixLimit) {
  LogLine line = Line("msg");
  line.tag = std::string(20, 't');
  EXPECT_EQ(FormatLogLine(line, LogFormat::kTag), "I/" + line.tag + ": msg");
  line.tag = std::string(200, 't');
  EXPECT_EQ(FormatLogLine(line, LogFormat::kTag), "I/" + std::string(125, 't') + "msg");
}

TEST_F(LogFormatTest, LettersFollowThePriorities) {
  std::string letters;
  for (int priority = DLOG_UNKNOWN; priority <= DLOG_PRIO_MAX; ++priority) {
    letters += PriorityLetter(priority);
  }
  EXPECT_EQ(letters, "??VDIWEFS?");
}

TEST_F(LogFormatTest, FormsAreKnownByName) {
  EXPECT_EQ(ParseLogFormat("brief"), LogFormat::kBrief);
  EXPECT_EQ(ParseLogFormat("kerneltime"), LogFormat::kKernelTime);
  EXPECT_THROW(ParseLogFormat("Brief"), SetError);
}

TEST_F(LogFormatTest, FilterWithoutExpressionsShowsEverything) {
  EXPECT_TRUE(LogFilter().Shows(Line("msg")));
}

TEST_F(LogFormatTest, FilterShowsATagFromItsPriorityOn) {
  LogLine line = Line("msg");
  EXPECT_TRUE(LogFilter({"TAG"}).Shows(line));
  EXPECT_TRUE(LogFilter({"TAG:I"}).Shows(line));
  EXPECT_FALSE(LogFilter({"TAG:E"}).Shows(line));
  EXPECT_FALSE(LogFilter({"OTHER:V"}).Shows(line));
  EXPECT_TRUE(LogFilter({"OTHER:E", "*:I"}).Shows(line));
  EXPECT_FALSE(LogFilter({"*:S"}).Shows(line));
}

TEST_F(LogFormatTest, FilterRefusesUnknownLetters) {
  EXPECT_THROW(LogFilter({"TAG:X"}), SetError);
  EXPECT_THROW(LogFilter({"TAG:"}), SetError);
  EXPECT_THROW(LogFilter({"TAG:VD"}), SetError);
}

}  // namespace
}  // namespace tvset::testing
