// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The library, loaded by the host as a set's web runtime loads it, on the set's own files.
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "extensions/extension_host.h"
#include "files_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kApp[] = "ab12cd34ef.Player";
constexpr std::chrono::seconds kPatience(60);

// Waits for the replies that come later.
class Page final : public orvane::extensions::InstanceClient {
 public:
  void OnMessage(std::string_view text) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    reply_ = text;
    changed_.notify_all();
  }
  void OnBinaryMessage(std::string_view /*bytes*/) override {}

  std::string Take() {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait_for(lock, kPatience, [this] { return !reply_.empty(); });
    return std::exchange(reply_, {});
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::string reply_;
};

class LibraryTest : public FilesTest {
 protected:
  LibraryTest() {
    Launch(kApp);
    orvane::extensions::HostOptions options;
    options.app_id = kApp;
    host_ = std::make_unique<orvane::extensions::ExtensionHost>(options);
    std::string error;
    if (!host_->LoadFile(ORVANE_LIBRARY, &error)) throw SetError(error);
    instance_ = host_->Find("dravelt.orvane")->CreateInstance(&page_);
  }

  // The reply that comes later. What a measurement needs comes before it is asked for.
  std::string Call(const std::string& name, const std::string& arguments) {
    instance_->SendSyncMessage("{\"cmd\":\"OrvaneManager_" + name +
                               "\",\"args\":{\"callbackId\":1," + arguments + "}}");
    return page_.Take();
  }
  std::string Stat(const std::string& resource) {
    return Call("getSystemStat", "\"resource\":\"" + resource + "\"");
  }

  // The figure behind the field's name; NaN when there is none.
  static double Figure(const std::string& reply, const std::string& field) {
    const size_t at = reply.find("\"" + field + "\":");
    return at == std::string::npos ? std::nan("") : std::stod(reply.substr(at + field.size() + 3));
  }
  double Memory() { return Figure(Stat("MEMORY"), "memoryUsage"); }
  double Cpu() { return Figure(Stat("CPU"), "cpuUsage"); }

  void ClosePage() { instance_.reset(); }

  static std::string ReadElsewhere(const std::string& key) {
    return Output(std::string(SETTING_READER) + " '" + set().paths().state_folder().string() +
                  "' '" + key + "' || echo failed");
  }

 private:
  Page page_;
  std::unique_ptr<orvane::extensions::ExtensionHost> host_;
  std::unique_ptr<orvane::extensions::Instance> instance_;
};

TEST_F(LibraryTest, MemoryIsTheSumOfWhatTheFilesSay) {
  set().files().Replace(SetFile::kMemoryStatistics, "h\nh\n{pid} n 1 2 3 4 5 1024 1024\n");
  set().files().Replace(SetFile::kGpuMemory, "h\nh\nh\nn {pid} 2048\n");
  set().files().Replace(SetFile::kGemInfo, "h\nh\n{pid} 1 1 0x1 3145728 1 2 3 4 name 2\n");
  EXPECT_EQ(Memory(), 7);
}

TEST_F(LibraryTest, MemoryIsTheKernelsFigureAndTheGraphicsMemory) {
  const std::string gpu = ReadStream(kGpuMemoryPath).value();
  double graphics = std::stod(Words(gpu).at(3).at(2)) / 1024;
  for (const auto& line : Words(ReadStream(kGemInfoPath).value())) {
    if (line[0] == Pid()) graphics += std::stod(line[4]) / 1024 / 1024;
  }
  const double before = (Rollup("Pss:") + Rollup("Swap:")) / 1024;
  const double memory = Memory();
  const double after = (Rollup("Pss:") + Rollup("Swap:")) / 1024;
  EXPECT_GE(memory, 0.8 * before + graphics - 1);
  EXPECT_LE(memory, 1.2 * after + graphics + 1);
}

TEST_F(LibraryTest, MemoryFailsWhenAFileIsMissing) {
  for (const char* file : {"file:qm_memstat", "file:gpu_memory", "file:gem_info"}) {
    set().faults().Fail(file, 2, FaultMode::kOnce);
    EXPECT_NE(Stat("MEMORY").find("Memory proc file retrieval error."), std::string::npos) << file;
    EXPECT_FALSE(std::isnan(Memory())) << file;
  }
}

TEST_F(LibraryTest, MemoryFailsWhenTheProcessIsNotInTheGpuFile) {
  set().files().Replace(SetFile::kGpuMemory, "h\nh\nh\nother 1 2048\n");
  EXPECT_NE(Stat("MEMORY").find("Memory proc file retrieval error."), std::string::npos);
  EXPECT_TRUE(LogHas("Pid not present in gpu_memory file"));
}

TEST_F(LibraryTest, CpuIsTheColumnByTheNumberOfProcessors) {
  set().files().Replace(SetFile::kTop, "{pid} 2 3 4 5 6 250.9 8\n");
  set().files().Replace(SetFile::kProcessors,
                        "processor : 0\nprocessor : 1\n processor\nprocessor : 2\nprocessor : 3\n");
  EXPECT_EQ(Cpu(), 62);
}

TEST_F(LibraryTest, CpuOfAnIdleProcessIsOne) { EXPECT_LE(Cpu(), 20); }

TEST_F(LibraryTest, CpuIsZeroWhenTheToolPrintsNothing) {
  set().files().Replace(SetFile::kTop, "");
  EXPECT_EQ(Cpu(), 0);
  EXPECT_TRUE(LogHas("Failed to get result from command: /usr/bin/top -b -n 1 -p " + Pid()));
}

TEST_F(LibraryTest, CpuIsZeroWithoutProcessorsOrCommand) {
  set().files().Remove(SetFile::kProcessors);
  EXPECT_EQ(Cpu(), 0);
  set().files().Restore(SetFile::kProcessors);
  set().faults().Fail("file:top", 11, FaultMode::kOnce);
  EXPECT_EQ(Cpu(), 0);
  EXPECT_TRUE(LogHas("Failed to execute command: /usr/bin/top"));
}

TEST_F(LibraryTest, ProfilingTextIsReadByAnotherProcessUntilThePageCloses) {
  EXPECT_NE(Call("recordProfiling", "\"label\":\"start\"").find("success"), std::string::npos);
  EXPECT_EQ(ReadElsewhere("memory/runningApps/performance_data"), "start");
  ClosePage();
  EXPECT_EQ(ReadElsewhere("memory/runningApps/performance_data"), "");
}

TEST_F(LibraryTest, ProfilingMarksTheKernelsTrace) {
  Call("recordProfiling", "\"label\":\"start\"");
  set().faults().Fail("vconf_set_str", -1, FaultMode::kOnce);
  Call("recordProfiling", "\"label\":\"next\"");
  const std::vector<KernelMarker> markers = set().kernel_markers().list();
  ASSERT_EQ(markers.size(), 2u);
  EXPECT_EQ(markers[0].text,
            "orvane.RecordProfiling with [" + std::string(kApp) + "] [0.000][start]");
  EXPECT_EQ(markers[0].length, markers[0].text.size());
  EXPECT_EQ(markers[1].text, "orvane.RecordProfiling Failed");
}

}  // namespace
}  // namespace tvset::testing
