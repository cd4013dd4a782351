// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/orvane_resource.h"
#include "set_fixture.h"
#include "system_fakes.h"

namespace orvane::test {
namespace {

using extension::orvane::OrvaneResource;
using ::testing::ElementsAre;

const std::string kPrefix = " orvane_resource.cc ";
constexpr char kGpuPath[] = "/sys/kernel/debug/gpu/gpu_memory";
constexpr char kGemPath[] = "/sys/kernel/debug/dri/0/gem_info";
constexpr char kStatPath[] = "/proc/1234/qm_memstat";
constexpr char kStatHead[] = "Memory of the process\nname kind a b c d e pss swap\n";
constexpr char kGpuHead[] = "GPU memory\nname pid KiB\n----\n";
constexpr char kGemHead[] = "GEM buffers\npid a b flags size c d e f name count\n";

class MemoryTest : public SetFixture {
 protected:
  MemoryTest() {
    system_.SetPid(1234);
    SetStat("player web 1 2 3 4 5 1024 1024");
    SetGpu("other 99 1000 x\nplayer 1234 2048 x\n");
    SetGem("1234 1 2 0x0 3145728 3 4 5 6 buffer 2\n");
  }

  void SetFile(const char* path, const std::string& text) {
    system_.RedirectFile(path, WriteFile("file" + std::to_string(++files_), text));
  }
  void SetStat(const std::string& figures) { SetFile(kStatPath, kStatHead + figures); }
  void SetGpu(const std::string& entries) { SetFile(kGpuPath, kGpuHead + entries); }
  void SetGem(const std::string& entries) { SetFile(kGemPath, kGemHead + entries); }
  void RemoveFile(const char* path) { system_.RedirectFile(path, folder() / "no file"); }

  double Stat(const std::string& figures) {
    SetStat(figures);
    return OrvaneResource().getPSSAndSwap();
  }
  double Gpu(const std::string& entries) {
    SetGpu(entries);
    return OrvaneResource().getGPUMemory();
  }
  double Gem(const std::string& entries) {
    SetGem(entries);
    return OrvaneResource().getGEMMemory();
  }
  static double Total() { return OrvaneResource().getMemoryConsumption(); }

  SystemFakes system_;
  int files_ = 0;
};

TEST_F(MemoryTest, AddsPssAndSwapInMebibytes) {
  EXPECT_EQ(OrvaneResource().getPSSAndSwap(), 2.0);
  EXPECT_THAT(Messages(), ElementsAre("I" + kPrefix +
                                      "getPSSAndSwap: PSS and Swap collected for pid[1234]: "
                                      "pss[1024.000000] swap[1024.000000] total[2.000000]"));
}

TEST_F(MemoryTest, TakesFiguresOverSeveralLines) {
  EXPECT_EQ(Stat("player\nweb\n1 2 3\n4 5\n512\n0.5e3\nmore"), 1012 / 1024.0);
}

TEST_F(MemoryTest, CountsMissingPssOrSwapAsZero) {
  EXPECT_EQ(Stat("player web 1 2 3 4 5 1024"), 1.0);
  EXPECT_EQ(Stat("player web 1 2 3 4 5 1024 none"), 1.0);
  EXPECT_EQ(Stat("player web 1 2 3 4 5 none 1024"), 0.0);
  EXPECT_EQ(Stat("player web 1 2 three 4 5 1024 1024"), 0.0);
  EXPECT_EQ(Stat(""), 0.0);
}

TEST_F(MemoryTest, FailsWithoutTheStatisticsFile) {
  RemoveFile(kStatPath);
  EXPECT_EQ(OrvaneResource().getPSSAndSwap(), -1.0);
  EXPECT_THAT(Messages(), ElementsAre("E" + kPrefix +
                                      "getPSSAndSwap: Failed to open "
                                      "[/proc/1234/qm_memstat]."));
}

TEST_F(MemoryTest, FindsTheProcessInTheGpuFile) {
  EXPECT_EQ(OrvaneResource().getGPUMemory(), 2.0);
  EXPECT_THAT(Messages(), ElementsAre("I" + kPrefix +
                                      "getGPUMemory: Gpu memory collected for "
                                      "pid[1234]: gpu[2048.000000]"));
}

TEST_F(MemoryTest, TakesTheFirstOfTwoGpuEntries) {
  EXPECT_EQ(Gpu("player 1234 1024\nplayer 1234 4096\n"), 1.0);
}

TEST_F(MemoryTest, TakesAGpuEntryWithoutALineEnd) { EXPECT_EQ(Gpu("player 1234 1024"), 1.0); }

TEST_F(MemoryTest, DoesNotReadTheThirdLineOfTheGpuFile) {
  SetFile(kGpuPath, "GPU memory\nname pid KiB\nplayer 1234 2048\n");
  EXPECT_EQ(OrvaneResource().getGPUMemory(), -1.0);
  EXPECT_THAT(Messages(), ElementsAre("I" + kPrefix +
                                      "getGPUMemory: Gpu memory collection failed for "
                                      "pid[1234]. Pid not present in gpu_memory file"));
}

TEST_F(MemoryTest, EndsTheGpuSearchAtALineWithoutAProcessId) {
  EXPECT_EQ(Gpu("other 99 1\nplayer none 5\nplayer 1234 2048\n"), -1.0);
  EXPECT_EQ(Gpu("other 99 none\nplayer 1234 2048\n"), -1.0);
}

TEST_F(MemoryTest, DoesNotFindTheProcessInAnEmptyGpuFile) {
  SetFile(kGpuPath, "");
  EXPECT_EQ(OrvaneResource().getGPUMemory(), -1.0);
  EXPECT_EQ(Gpu(""), -1.0);
  EXPECT_EQ(Gpu("other 99 12\n"), -1.0);
}

TEST_F(MemoryTest, FailsWithoutTheGpuFile) {
  RemoveFile(kGpuPath);
  EXPECT_EQ(OrvaneResource().getGPUMemory(), -1.0);
  EXPECT_THAT(Messages(),
              ElementsAre("E" + kPrefix + "getGPUMemory: Failed to open [" + kGpuPath + "]."));
}

TEST_F(MemoryTest, AddsTheProcesssGemBuffers) {
  EXPECT_EQ(OrvaneResource().getGEMMemory(), 3.0);
  EXPECT_THAT(Messages(), ElementsAre("I" + kPrefix +
                                      "getGEMMemory: Gem memory collection done for "
                                      "pid[1234]. Total Gem usage: [3145728.000000]"));
  EXPECT_EQ(Gem("1234 1 2 0 1048576 3 4 5 6 a 2\n99 1 2 0 999999 3 4 5 6 b 2\n"
                "1234 1 2 0 2097152 3 4 5 6 c 0\n"),
            3.0);
}

TEST_F(MemoryTest, LeavesOutGemBuffersByFlagsOrCount) {
  EXPECT_EQ(Gem("1234 1 2 2 1048576 3 4 5 6 a 2\n1234 1 2 0 1048576 3 4 5 6 b 1\n"
                "1234 1 2 0 1048576 3 4 5 6 c 2\n"),
            1.0);
  EXPECT_EQ(Gem("1234 1 2 0x2 1048576 3 4 5 6 a 2\n"), 0.0);
  EXPECT_EQ(Gem("1234 1 2 0002 1048576 3 4 5 6 a 2\n"), 0.0);
  EXPECT_EQ(Gem("1234 1 2 12 1048576 3 4 5 6 a 2\n"), 1.0);
  EXPECT_EQ(Gem("1234 1 2 0x20 1048576 3 4 5 6 a 2\n"), 1.0);
}

TEST_F(MemoryTest, CountsGemBuffersWhoseFlagsAreNoNumber) {
  EXPECT_EQ(Gem("1234 1 2 xyz 1048576 3 4 5 6 a 2\n"), 1.0);
  EXPECT_EQ(Gem("1234 1 2 ffffffffffffffffff 1048576 3 4 5 6 a 2\n"), 1.0);
}

TEST_F(MemoryTest, CountsTheLastGemEntryOnce) {
  for (const char* end : {"", "\n", "\n\n", " rest of the line\n"}) {
    EXPECT_EQ(Gem("1234 1 2 0 1048576 3 4 5 6 a 2" + std::string(end)), 1.0) << end;
  }
}

TEST_F(MemoryTest, EndsTheGemScanAtALineWithoutAProcessId) {
  EXPECT_EQ(Gem("1234 1 2 0 1048576 3 4 5 6 a 2\ntotal\n1234 1 2 0 1048576 3 4 5 6 b 2\n"), 1.0);
}

TEST_F(MemoryTest, DoesNotCountAGemEntryThatEndsBeforeItsFlags) {
  EXPECT_EQ(Gem("1234 1 2 0 1048576 3 4 5 6 a 2\n1234 1 none 0 1048576 3 4 5 6 b 2\n"), 1.0);
  EXPECT_EQ(Gem("1234 1 2 0 1048576 3 4 5 6 a 2\n1234 1"), 1.0);
}

TEST_F(MemoryTest, DoesNotReadTheFirstTwoLinesOfTheGemFile) {
  SetFile(kGemPath, "1234 1 2 0 1048576 3 4 5 6 a 2\n1234 1 2 0 1048576 3 4 5 6 a 2\n");
  EXPECT_EQ(OrvaneResource().getGEMMemory(), 0.0);
}

TEST_F(MemoryTest, GivesNoGemMemoryToAProcessWithoutBuffers) {
  EXPECT_EQ(Gem("99 1 2 0 1048576 3 4 5 6 a 2\n"), 0.0);
  EXPECT_EQ(Gem(""), 0.0);
}

TEST_F(MemoryTest, FailsWithoutTheGemFile) {
  RemoveFile(kGemPath);
  EXPECT_EQ(OrvaneResource().getGEMMemory(), -1.0);
  EXPECT_THAT(Messages(),
              ElementsAre("E" + kPrefix + "getGEMMemory: Failed to open [" + kGemPath + "]."));
}

TEST_F(MemoryTest, AddsTheThreeFigures) {
  EXPECT_EQ(Total(), 7.0);
  EXPECT_EQ(Messages().front(),
            "D" + kPrefix + "getMemoryConsumption: Getting Memory consumption for pid[1234]");
}

TEST_F(MemoryTest, CutsTheSumToWholeMebibytes) {
  SetStat("player web 1 2 3 4 5 97269.76 0");  // 94.99 MiB
  EXPECT_EQ(Total(), 99.0);
}

TEST_F(MemoryTest, ClampsASumBeyond32Bits) {
  SetStat("player web 1 2 3 4 5 1e300 0");
  EXPECT_EQ(Total(), 2147483647.0);
}

TEST_F(MemoryTest, FailsWhenAnyFigureFailsAndStillReadsAll) {
  for (const char* path : {kStatPath, kGpuPath, kGemPath}) {
    SetStat("player web 1 2 3 4 5 1024 1024");
    SetGpu("player 1234 2048\n");
    SetGem("");
    RemoveFile(path);
    ClearLog();
    EXPECT_EQ(Total(), -1.0) << path;
    ASSERT_EQ(Messages().size(), 5U);
    EXPECT_EQ(Messages().back(),
              "E" + kPrefix + "getMemoryConsumption: Failed to collect memory consumption.");
  }
}

TEST_F(MemoryTest, FailsWhenTheProcessIsNotInTheGpuFile) {
  SetGpu("other 99 12\n");
  EXPECT_EQ(Total(), -1.0);
}

}  // namespace
}  // namespace orvane::test
