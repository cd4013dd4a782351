// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/kernel_markers.h"

#include <sys/prctl.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <vector>

#include "files_fixture.h"

namespace tvset::testing {
namespace {

constexpr int kMark = 666;

int64_t Now() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

class KernelMarkersTest : public FilesTest {
 protected:
  static int Mark(const std::string& text) { return prctl(kMark, text.c_str(), text.size()); }
  static std::vector<KernelMarker> markers() { return set().kernel_markers().list(); }
};

TEST_F(KernelMarkersTest, MarkIsRecordedWithLengthAndTime) {
  const int64_t before = Now();
  EXPECT_EQ(Mark("player.start"), 0);
  const int64_t after = Now();
  ASSERT_EQ(markers().size(), 1u);
  const KernelMarker marker = markers()[0];
  EXPECT_EQ(marker.text, "player.start");
  EXPECT_EQ(marker.length, 12u);
  EXPECT_GE(marker.time_ns, before);
  EXPECT_LE(marker.time_ns, after);
  EXPECT_EQ(marker.tid, gettid());
}

TEST_F(KernelMarkersTest, ObserversHearOfEachMark) {
  struct Marks : Observer {
    void OnKernelMarker(const KernelMarker& marker) override { texts.push_back(marker.text); }
    std::vector<std::string> texts;
  } marks;
  set().events().Add(&marks);
  Mark("one");
  Mark("two");
  set().events().Remove(&marks);
  Mark("three");
  EXPECT_EQ(marks.texts, (std::vector<std::string>{"one", "two"}));
}

TEST_F(KernelMarkersTest, LengthIsTheCallersAndLongTextIsCut) {
  const std::string text(10000, 'x');
  EXPECT_EQ(prctl(kMark, "abcdef", 3), 0);
  EXPECT_EQ(Mark(text), 0);
  EXPECT_EQ(Mark(""), 0);
  ASSERT_EQ(markers().size(), 3u);
  EXPECT_EQ(markers()[0].text, "abc");
  EXPECT_EQ(markers()[1].text.size(), KernelMarkers::kMaxText);
  EXPECT_EQ(markers()[1].length, text.size());
  EXPECT_EQ(markers()[2].text, "");
}

TEST_F(KernelMarkersTest, NullTextIsABadAddress) {
  EXPECT_EQ(prctl(kMark, nullptr, 3), -1);
  EXPECT_EQ(errno, EFAULT);
  EXPECT_TRUE(markers().empty());
}

TEST_F(KernelMarkersTest, OldestMarksGoFirst) {
  for (size_t i = 0; i < KernelMarkers::kMaxRecorded + 2; ++i) Mark(std::to_string(i));
  EXPECT_EQ(markers().size(), KernelMarkers::kMaxRecorded);
  EXPECT_EQ(markers().front().text, "2");
  EXPECT_EQ(set().kernel_markers().count(), KernelMarkers::kMaxRecorded + 2);
}

TEST_F(KernelMarkersTest, MarkCanBeMadeToFail) {
  set().faults().Fail("prctl", EPERM, FaultMode::kOnce);
  EXPECT_EQ(Mark("one"), -1);
  EXPECT_EQ(errno, EPERM);
  EXPECT_EQ(Mark("two"), 0);
  ASSERT_EQ(markers().size(), 1u);
  EXPECT_EQ(markers()[0].text, "two");
}

TEST_F(KernelMarkersTest, RestartForgetsMarks) {
  Mark("one");
  StartSet();
  EXPECT_TRUE(markers().empty());
  EXPECT_EQ(set().kernel_markers().count(), 0u);
}

}  // namespace
}  // namespace tvset::testing
