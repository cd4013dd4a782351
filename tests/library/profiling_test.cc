// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "library_fixture.h"

namespace orvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::MatchesRegex;
using ::testing::SizeIs;

constexpr char kProfilingKey[] = "memory/runningApps/performance_data";
constexpr char kSuccess[] = R"({"callbackId":1,"result":{},"status":"success"})";
const std::string kTask = " orvane_manager.cc operator(): ";
const std::string kFinalised = "D" + kTask + "Finalizing RecordProfiling task with callback id=1";

class ProfilingTest : public LibraryFixture {
 protected:
  std::string Record(const std::string& label) {
    Start("recordProfiling", R"({"callbackId":1,"label":")" + label + "\"}");
    const std::string reply = AwaitReply();
    AwaitIdleWorker();
    return reply;
  }
  std::string last_marker() const {
    EXPECT_FALSE(system_.markers().empty());
    const KernelMarker& marker = system_.markers().back();
    EXPECT_EQ(marker.length, marker.text.size());
    return marker.text;
  }
};

TEST_F(ProfilingTest, PublishesTheLabel) {
  EXPECT_EQ(Record("start"), kSuccess);
  EXPECT_EQ(set().settings().GetString(kProfilingKey), "start");
  EXPECT_EQ(last_marker(), "orvane.RecordProfiling with [aBcDe01234.Player] [0.000][start]");
  EXPECT_THAT(
      Messages(),
      ElementsAre("I CommonUtil.cc RecordProfiling: Success to recordProfiling",
                  "E CommonUtil.cc GetTimeStamp: added = [0.000000][start]",
                  "I" + kTask + "Success to RecordProfiling with [0.000][start]", kFinalised));
}

TEST_F(ProfilingTest, MeasuresTheTimeSinceTheLabelBefore) {
  Record("first");
  EXPECT_EQ(Record("second"), kSuccess);
  EXPECT_THAT(last_marker(), MatchesRegex("orvane.RecordProfiling with \\[aBcDe01234.Player\\] "
                                          "\\[[0-9]+[.][0-9]{3}\\]\\[second\\]"));
}

TEST_F(ProfilingTest, AnEmptyLabelStartsAfresh) {
  Record("first");
  ClearLog();
  EXPECT_EQ(Record(""), kSuccess);
  EXPECT_EQ(set().settings().GetString(kProfilingKey), "");
  EXPECT_EQ(last_marker(), "orvane.RecordProfiling with [aBcDe01234.Player] [][]");
  EXPECT_THAT(Messages(),
              ElementsAre("I CommonUtil.cc RecordProfiling: Success to recordProfiling",
                          "I CommonUtil.cc GetTimeStamp: data clear!",
                          "I" + kTask + "Success to RecordProfiling with [][]", kFinalised));
  Record("again");
  EXPECT_EQ(last_marker(), "orvane.RecordProfiling with [aBcDe01234.Player] [0.000][again]");
}

TEST_F(ProfilingTest, NamesNobodyWithoutAFocus) {
  set().applications().ClearFocus();
  EXPECT_EQ(Record("start"), kSuccess);
  EXPECT_EQ(last_marker(), "orvane.RecordProfiling with [] [0.000][start]");
}

TEST_F(ProfilingTest, CutsTheMarkerAt1023Characters) {
  const std::string label(5000, 'x');
  EXPECT_EQ(Record(label), kSuccess);
  EXPECT_EQ(set().settings().GetString(kProfilingKey), label);
  const std::string whole =
      "orvane.RecordProfiling with [aBcDe01234.Player] [0.000][" + label + "]";
  EXPECT_EQ(last_marker(), whole.substr(0, 1023));
}

TEST_F(ProfilingTest, TakesALabelForTextAndNotForAFormat) {
  EXPECT_EQ(Record("%s%n%1%"), kSuccess);
  EXPECT_EQ(last_marker(), "orvane.RecordProfiling with [aBcDe01234.Player] [0.000][%s%n%1%]");
}

TEST_F(ProfilingTest, FailsWhenTheLabelIsNotPublished) {
  Fail("vconf_set_str");
  EXPECT_EQ(Record("start"),
            R"({"callbackId":1,"error":{"code":9999,"message":"Fail to record profile",)"
            R"("name":"UnknownError"},"status":"error"})");
  EXPECT_EQ(last_marker(), "orvane.RecordProfiling Failed");
  EXPECT_THAT(system_.markers(), SizeIs(1));
  EXPECT_THAT(Messages(),
              ElementsAre("I CommonUtil.cc RecordProfiling: Fail to set the vonf value, key = "
                          "[memory/runningApps/performance_data]",
                          "E" + kTask + "Fail to RecordProfiling", kFinalised));
}

TEST_F(ProfilingTest, AFailureLeavesThePointsAlone) {
  Record("first");
  Fail("vconf_set_str", -1, tvset::FaultMode::kOnce);
  Record("lost");
  Fail("vconf_set_str", -1, tvset::FaultMode::kOnce);
  Record("");
  ClearLog();
  Record("third");
  // Not 0.000: the first point is still there.
  EXPECT_THAT(Messages(), Contains(MatchesRegex("E CommonUtil.cc GetTimeStamp: added = "
                                                "\\[[0-9]+[.][0-9]{6}\\]\\[third\\]")));
  EXPECT_THAT(Messages(), ::testing::Not(Contains("E CommonUtil.cc GetTimeStamp: added = "
                                                  "[0.000000][third]")));
}

}  // namespace
}  // namespace orvane::test
