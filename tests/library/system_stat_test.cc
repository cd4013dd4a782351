// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <unistd.h>

#include "library_fixture.h"

namespace orvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

const std::string kTask = " orvane_manager.cc operator(): ";

class SystemStatTest : public LibraryFixture {
 protected:
  SystemStatTest() {
    SetFile("/proc/cpuinfo", "processor : 0\nprocessor : 1\n");
    system_.SetCommandOutput("12.5\n");
    const std::string pid = std::to_string(getpid());
    SetFile("/proc/" + pid + "/qm_memstat", "a\nb\nplayer web 1 2 3 4 5 95000 2000\n");
    SetFile("/sys/kernel/debug/gpu/gpu_memory", "a\nb\nc\nplayer " + pid + " 1024\n");
    SetFile("/sys/kernel/debug/dri/0/gem_info", "a\nb\n" + pid + " 1 2 0 1048576 3 4 5 6 b 2\n");
  }

  void SetFile(const std::string& path, const std::string& text) {
    system_.RedirectFile(path, WriteFile("file" + std::to_string(++files_), text));
  }

  std::string Ask(const std::string& resource) {
    Start("getSystemStat", R"({"callbackId":1,"resource":")" + resource + "\"}");
    const std::string reply = AwaitReply();
    AwaitIdleWorker();
    return reply;
  }

  int files_ = 0;
};

TEST_F(SystemStatTest, ReportsTheCpuShareOfEachProcessor) {
  EXPECT_EQ(Ask("CPU"), R"({"callbackId":1,"result":{"cpuUsage":6},"status":"success"})");
  EXPECT_EQ(Messages().front(), "D orvane_manager.cc GetCpuStat: Getting CPU stats.");
  EXPECT_EQ(Messages().back(), "D" + kTask + "Finalizing GetCpuStat task with callback id=1");
}

TEST_F(SystemStatTest, ReportsAFailedCpuMeasurementAs0) {
  system_.SetCommandOutput("");
  EXPECT_EQ(Ask("CPU"), R"({"callbackId":1,"result":{"cpuUsage":0},"status":"success"})");
  system_.FailCommands();
  EXPECT_EQ(Ask("CPU"), R"({"callbackId":1,"result":{"cpuUsage":0},"status":"success"})");
  EXPECT_THAT(Messages(), Not(Contains("E" + kTask + "Failed Retrieving Cpu Usage.")));
}

TEST_F(SystemStatTest, ReportsACpuShareOfMinus1AsAnError) {
  system_.SetCommandOutput("-3\n");
  EXPECT_EQ(Ask("CPU"),
            R"({"callbackId":1,"error":{"code":9999,"message":"CPU proc file retrieval error.",)"
            R"("name":"UnknownError"},"status":"error"})");
  const std::vector<std::string> messages = Messages();
  EXPECT_EQ(messages[messages.size() - 3], "E" + kTask + "Failed Retrieving Cpu Usage.");
  EXPECT_EQ(messages[messages.size() - 2], "E" + kTask + "Creating PlatformResult with error");
}

TEST_F(SystemStatTest, FinalisesACpuMeasurementThatThrows) {
  system_.SetCommandOutput("4294967296\n");
  Start("getSystemStat", R"({"callbackId":1,"resource":"CPU"})");
  AwaitIdleWorker();
  EXPECT_THAT(host_.posts(instance_), ::testing::IsEmpty());
  EXPECT_THAT(Messages(), Contains("D" + kTask + "Finalizing GetCpuStat task with callback id=1"));
  system_.SetCommandOutput("4\n");
  EXPECT_EQ(Ask("CPU"), R"({"callbackId":1,"result":{"cpuUsage":2},"status":"success"})");
}

TEST_F(SystemStatTest, ReportsMemoryInWholeMebibytes) {
  // 94.7 + 1 + 1
  EXPECT_EQ(Ask("MEMORY"), R"({"callbackId":1,"result":{"memoryUsage":96},"status":"success"})");
  EXPECT_EQ(Messages().front(), "D orvane_manager.cc GetMemoryStat: Getting Memory stats.");
  EXPECT_EQ(Messages().back(), "D" + kTask + "Finalizing GetMemoryStat task with callback id=1");
}

TEST_F(SystemStatTest, ReportsAFailedMemoryMeasurementAsAnError) {
  SetFile("/sys/kernel/debug/gpu/gpu_memory", "a\nb\nc\nother 1 1024\n");
  EXPECT_EQ(Ask("MEMORY"),
            R"({"callbackId":1,"error":{"code":9999,"message":"Memory proc file retrieval )"
            R"(error.","name":"UnknownError"},"status":"error"})");
  const std::vector<std::string> messages = Messages();
  EXPECT_EQ(messages[messages.size() - 3], "E" + kTask + "Failed Retrieving Memory Usage.");
  EXPECT_EQ(messages[messages.size() - 2], "E" + kTask + "Creating PlatformResult with error");
}

TEST_F(SystemStatTest, MeasuresAfreshForEachRequest) {
  Ask("MEMORY");
  SetFile("/sys/kernel/debug/gpu/gpu_memory",
          "a\nb\nc\nplayer " + std::to_string(getpid()) + " 3072\n");
  EXPECT_EQ(Ask("MEMORY"), R"({"callbackId":1,"result":{"memoryUsage":98},"status":"success"})");
}

// Under the thread sanitizer this shows that measurements, which share their scratch members, never
// overlap.
TEST_F(SystemStatTest, MeasurementsOfManyPagesDoNotDisturbEachOther) {
  std::vector<XW_Instance> pages;
  for (int i = 0; i < 5; ++i) {
    pages.push_back(host_.Create());
  }
  for (int round = 0; round < 10; ++round) {
    for (const XW_Instance page : pages) {
      host_.SendSync(page, R"({"cmd":"OrvaneManager_getSystemStat",)"
                           R"("args":{"callbackId":1,"resource":"MEMORY"}})");
    }
  }
  for (const XW_Instance page : pages) {
    for (int round = 0; round < 10; ++round) {
      EXPECT_EQ(host_.AwaitPost(page),
                R"({"callbackId":1,"result":{"memoryUsage":96},"status":"success"})");
    }
    host_.Destroy(page);
  }
}

}  // namespace
}  // namespace orvane::test
