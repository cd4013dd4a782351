// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/CommonUtil.h"
#include "set_fixture.h"
#include "system_fakes.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr char kProfilingKey[] = "memory/runningApps/performance_data";
constexpr char kVersionKey[] = "tizen.org/feature/platform.version";

class CommonUtilTest : public SetFixture {
 protected:
  void SetPlatformVersion(const std::string& version) {
    set().features().Set(kVersionKey, "string", version, tvset::FeatureGroup::kPlatform);
  }

  SystemFakes system_;
};

TEST_F(CommonUtilTest, DebugModeIsOnWhileTheFileExists) {
  system_.RedirectStat("/etc/debug", WriteFile("debug", ""));
  EXPECT_TRUE(CommonUtil::IsDebug());
  EXPECT_THAT(Messages(),
              ElementsAre("I CommonUtil.cc IsDebug: File [/etc/debug] exists - debug mode is on"));
}

TEST_F(CommonUtilTest, DebugModeIsOnForAFolderToo) {
  system_.RedirectStat("/etc/debug", folder());
  EXPECT_TRUE(CommonUtil::IsDebug());
}

TEST_F(CommonUtilTest, DebugModeIsOffWithoutTheFile) {
  system_.RedirectStat("/etc/debug", folder() / "no file");
  EXPECT_FALSE(CommonUtil::IsDebug());
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(CommonUtilTest, PlatformVersionIsItsFirstThreeCharacters) {
  const std::pair<const char*, const char*> kVersions[] = {
      {"6.5.0", "6.5"}, {"10.0", "10."}, {"7", "7"}};
  for (const auto& [version, text] : kVersions) {
    SetPlatformVersion(version);
    ClearLog();
    EXPECT_EQ(CommonUtil::GetPlatformVersion(), text);
    EXPECT_THAT(Messages(), ElementsAre("I CommonUtil.cc GetPlatformVersion: tizen version is [" +
                                        std::string(text) + "]"));
  }
}

TEST_F(CommonUtilTest, PlatformVersionIsEmptyWhenItCannotBeRead) {
  Fail("system_info_get_platform_string", -5);
  EXPECT_EQ(CommonUtil::GetPlatformVersion(), "");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(CommonUtilTest, RecordProfilingPublishesEveryText) {
  for (const char* text : {"first", "", "last"}) {
    ClearLog();
    EXPECT_TRUE(CommonUtil::RecordProfiling(text));
    EXPECT_EQ(set().settings().GetString(kProfilingKey), text);
    EXPECT_THAT(Messages(),
                ElementsAre("I CommonUtil.cc RecordProfiling: Success to recordProfiling"));
  }
}

TEST_F(CommonUtilTest, RecordProfilingKeepsTheOldTextWhenItFails) {
  CommonUtil::RecordProfiling("first");
  ClearLog();
  Fail("vconf_set_str");
  EXPECT_FALSE(CommonUtil::RecordProfiling("second"));
  EXPECT_EQ(set().settings().GetString(kProfilingKey), "first");
  EXPECT_THAT(Messages(),
              ElementsAre("I CommonUtil.cc RecordProfiling: Fail to set the vonf value, key = "
                          "[memory/runningApps/performance_data]"));
}

TEST_F(CommonUtilTest, TimeStampsAreGapsBetweenNeighbours) {
  std::vector<DebugPointInfo> points;
  EXPECT_EQ(CommonUtil::GetTimeStamp(points, "a"), "0.000");
  points.back().time -= std::chrono::milliseconds(1250);
  const std::string gap = CommonUtil::GetTimeStamp(points, "b");

  // As long as the test takes, but for the 1.25 s that were moved.
  EXPECT_GE(std::stod(gap), 1.25);
  EXPECT_LT(std::stod(gap), 60.0);
  ASSERT_THAT(points, SizeIs(2));
  EXPECT_EQ(points[0].label, "a");
  EXPECT_EQ(points[0].elapsed, 0.0);
  EXPECT_EQ(points[1].label, "b");
  EXPECT_GE(points[1].elapsed, 1.25);
  EXPECT_GE(points[1].time, points[0].time);
}

TEST_F(CommonUtilTest, TimeStampsHaveThreeDecimals) {
  std::vector<DebugPointInfo> points;
  CommonUtil::GetTimeStamp(points, "a");
  points.back().time -= std::chrono::hours(100);
  EXPECT_THAT(CommonUtil::GetTimeStamp(points, "b"),
              ::testing::MatchesRegex("3600[0-9]{2}[.][0-9]{3}"));
}

TEST_F(CommonUtilTest, TimeStampsFollowAClockThatWasSetBack) {
  std::vector<DebugPointInfo> points;
  CommonUtil::GetTimeStamp(points, "a");
  points.back().time += std::chrono::hours(1);
  EXPECT_LT(std::stod(CommonUtil::GetTimeStamp(points, "b")), -3000.0);
}

TEST_F(CommonUtilTest, TimeStampsLogThePoint) {
  std::vector<DebugPointInfo> points;
  CommonUtil::GetTimeStamp(points, "start");
  EXPECT_THAT(Messages(), ElementsAre("E CommonUtil.cc GetTimeStamp: added = [0.000000][start]"));
}

TEST_F(CommonUtilTest, AnEmptyLabelClearsThePoints) {
  std::vector<DebugPointInfo> points;
  CommonUtil::GetTimeStamp(points, "a");
  ClearLog();
  EXPECT_EQ(CommonUtil::GetTimeStamp(points, ""), "");
  EXPECT_THAT(points, IsEmpty());
  EXPECT_THAT(Messages(), ElementsAre("I CommonUtil.cc GetTimeStamp: data clear!"));
  EXPECT_EQ(CommonUtil::GetTimeStamp(points, "b"), "0.000");
}

}  // namespace
}  // namespace orvane::test
