// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <sys/mman.h>

#include <string>
#include <vector>

#include "files/drm_usage.h"
#include "files_fixture.h"
#include "tvset/profile_keys.h"

namespace tvset::testing {
namespace {

constexpr double kKib = 1024;

class FiguresTest : public FilesTest {
 protected:
  // The words of the third line of the statistics: process id, name, five figures, PSS, swap.
  static std::vector<std::string> MemoryLine() {
    const std::vector<std::vector<std::string>> lines = Words(ReadStream(MemoryPath()).value());
    EXPECT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines.at(2).size(), 9u);
    return lines.at(2);
  }

  static void SetProfile(const char* key, const char* type, const char* text) {
    set().features().Set(key, type, text, FeatureGroup::kCustom);
  }

  static bool DriversReport() { return DrmUsage::OfThisProcess().found(); }
};

TEST_F(FiguresTest, MemoryLineBeginsWithTheProcess) {
  const std::vector<std::string> line = MemoryLine();
  EXPECT_EQ(line[0], Pid());
  EXPECT_EQ(line[1], "set_files_test");
}

TEST_F(FiguresTest, MemoryFiguresAreTheKernels) {
  const double before = Rollup("Pss:");
  const std::vector<std::string> line = MemoryLine();
  const double after = Rollup("Pss:");
  EXPECT_NEAR(std::stod(line[7]), (before + after) / 2, 0.1 * before);
  EXPECT_NEAR(std::stod(line[2]), Rollup("Rss:"), 0.1 * Rollup("Rss:"));
  EXPECT_NEAR(std::stod(line[8]), Rollup("Swap:"), 0.1 * before);
}

TEST_F(FiguresTest, MemoryThatTheProcessTakesIsInTheFigure) {
  constexpr size_t kTaken = size_t{64} << 20;
  const auto figure = [] { return std::stod(MemoryLine()[7]) + std::stod(MemoryLine()[8]); };
  const double before = figure();
  // Filled by the kernel: a sanitizer keeps books on what the program itself writes.
  void* const taken = mmap(nullptr, kTaken, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
  ASSERT_NE(taken, MAP_FAILED);
  const double during = figure();
  munmap(taken, kTaken);
  EXPECT_NEAR(during - before, kTaken / kKib, 0.1 * kTaken / kKib);
  EXPECT_LE(figure() - before, 0.1 * kTaken / kKib);
}

TEST_F(FiguresTest, GpuMemoryNamesTheProcessInTheFourthLine) {
  const std::vector<std::vector<std::string>> lines = Words(ReadStream(kGpuMemoryPath).value());
  ASSERT_EQ(lines.size(), 4u);
  ASSERT_EQ(lines[3].size(), 3u);
  EXPECT_EQ(lines[3][0], "set_files_test");
  EXPECT_EQ(lines[3][1], Pid());
}

TEST_F(FiguresTest, GpuMemoryIsTheProfilesWhereDriversReportNone) {
  if (DriversReport()) GTEST_SKIP() << "this machine's drivers report figures";
  SetProfile(kGpuMemoryKey, "int", "12345");
  EXPECT_EQ(Words(ReadStream(kGpuMemoryPath).value()).at(3).at(2), "12345");
  set().features().Remove(kGpuMemoryKey);
  EXPECT_EQ(Words(ReadStream(kGpuMemoryPath).value()).at(3).at(2), "0");
}

TEST_F(FiguresTest, GemBuffersAreTheProfilesWhereDriversReportNone) {
  if (DriversReport()) GTEST_SKIP() << "this machine's drivers report figures";
  SetProfile(kGemBuffersKey, "string", "4096 4097");
  const std::vector<std::vector<std::string>> lines = Words(ReadStream(kGemInfoPath).value());
  ASSERT_EQ(lines.size(), 4u);
  for (const size_t row : {2u, 3u}) {
    ASSERT_EQ(lines[row].size(), 11u);
    EXPECT_EQ(lines[row][0], Pid());
    EXPECT_NE(std::stol(lines[row][3], nullptr, 16), 2) << "a set does not count it";
    EXPECT_NE(lines[row][10], "1") << "a set does not count it";
  }
  EXPECT_EQ(lines[2][4], "4096");
  EXPECT_EQ(lines[3][4], "4097");
}

TEST_F(FiguresTest, SizeThatIsNoNumberIsPassedOverAndSaid) {
  if (DriversReport()) GTEST_SKIP() << "this machine's drivers report figures";
  SetProfile(kGemBuffersKey, "string", "big 4096 -1 12x");
  EXPECT_EQ(Words(ReadStream(kGemInfoPath).value()).size(), 3u);
  EXPECT_TRUE(LogHas("holds \"big\", which is no size"));
  EXPECT_TRUE(LogHas("holds \"12x\", which is no size"));
}

TEST_F(FiguresTest, ProfileWithoutBuffersGivesNoEntry) {
  if (DriversReport()) GTEST_SKIP() << "this machine's drivers report figures";
  set().features().Remove(kGemBuffersKey);
  EXPECT_EQ(Words(ReadStream(kGemInfoPath).value()).size(), 2u);
}

}  // namespace
}  // namespace tvset::testing
