// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What is not the set's own goes where it went before.
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "files_fixture.h"

namespace tvset::testing {
namespace {

class InterposedTest : public FilesTest {};

TEST_F(InterposedTest, SetFilesAreInForceInThisProgram) {
  EXPECT_TRUE(SetFiles::in_force());
  EXPECT_FALSE(LogHas("the files that only a set has cannot be read"));
}

TEST_F(InterposedTest, StreamHasADescriptorAndASize) {
  set().files().Replace(SetFile::kGpuMemory, "abc");
  FILE* const stream = std::fopen(kGpuMemoryPath, "r");
  ASSERT_NE(stream, nullptr);
  struct stat status = {};
  EXPECT_EQ(fstat(fileno(stream), &status), 0);
  EXPECT_EQ(status.st_size, 3);
  EXPECT_NE(fcntl(fileno(stream), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_EQ(std::fclose(stream), 0);
}

TEST_F(InterposedTest, StreamCanBeReadInParts) {
  set().files().Replace(SetFile::kGpuMemory, "line one\nline two\n");
  std::ifstream stream(kGpuMemoryPath);
  std::string line;
  std::getline(stream, line);
  EXPECT_EQ(line, "line one");
  stream.seekg(0);
  std::getline(stream, line);
  std::getline(stream, line);
  EXPECT_EQ(line, "line two");
}

TEST_F(InterposedTest, SetFilesAreForReadingOnly) {
  for (const char* mode : {"w", "a", "r+", "w+"}) {
    errno = 0;
    EXPECT_EQ(std::fopen(kGpuMemoryPath, mode), nullptr) << mode;
    EXPECT_EQ(errno, EACCES) << mode;
  }
}

TEST_F(InterposedTest, FileOfTheSetHasAStatus) {
  struct stat status = {};
  for (const std::string& path : {MemoryPath(), std::string(kGpuMemoryPath)}) {
    ASSERT_EQ(stat(path.c_str(), &status), 0) << path;
    EXPECT_TRUE(S_ISREG(status.st_mode));
  }
  EXPECT_TRUE(std::filesystem::exists(kGemInfoPath));
}

TEST_F(InterposedTest, OtherPathsReachTheMachine) {
  const std::string pid = Pid();
  for (const std::string& path :
       {std::string("/proc/1x/qm_memstat"), "/proc/0" + pid + "/qm_memstat",
        "/proc/" + pid + "/qm_memstat2", "/proc/" + pid + "x/qm_memstat",
        std::string("/proc//qm_memstat"), "/proc/1" + pid + "/qm_memstat",
        std::string("/etc/debug2"), std::string("/etc/debu"), std::string("/sys/kernel/debug/gpu"),
        std::string("/sys/kernel/debug/gpu/gpu_memory/"), std::string("x/etc/debug"),
        std::string("etc/debug"), std::string("/"), std::string()}) {
    struct stat status = {};
    errno = 0;
    FILE* const stream = std::fopen(path.c_str(), "r");
    const int error = errno;
    if (stream != nullptr) {
      // Only the folders of this list can be opened; reading one fails.
      EXPECT_EQ(std::fgetc(stream), EOF) << path;
      std::fclose(stream);
    } else {
      EXPECT_TRUE(error == ENOENT || error == EACCES || error == EPERM) << path << " " << error;
      EXPECT_NE(stat(path.c_str(), &status), 0) << path;
    }
  }
}

TEST_F(InterposedTest, OtherFilesAreWrittenAndRead) {
  const std::string path = (folder() / "other").string();
  std::ofstream(path) << "text";
  EXPECT_EQ(ReadStream(path), "text");
  FILE* const stream = std::fopen(path.c_str(), "a+");
  ASSERT_NE(stream, nullptr);
  std::fputs("more", stream);
  std::fclose(stream);
  EXPECT_EQ(ReadStream(path), "textmore");
  struct stat status = {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_size, 8);
}

TEST_F(InterposedTest, NullPathOfAStatusIsTheKernelsToRefuse) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "the sanitizer's own definition reads the path";
#endif
  // Behind a pointer that the compiler does not follow: the C library declares the path non-null.
  int (*volatile status_of)(const char*, struct stat*) = stat;
  const char* volatile path = nullptr;
  struct stat status = {};
  EXPECT_EQ(status_of(path, &status), -1);
  EXPECT_EQ(errno, EFAULT);
}

TEST_F(InterposedTest, OtherCommandsRunAsTheyStand) {
  EXPECT_EQ(Output("echo /usr/bin/top -b"), "/usr/bin/top -b\n");
  EXPECT_EQ(Output("printf '%s' \"$0\""), "sh");
  errno = 0;
  EXPECT_EQ(popen("true", "no mode"), nullptr);
  EXPECT_EQ(errno, EINVAL);
}

TEST_F(InterposedTest, CommandCanBeWrittenTo) {
  const std::string path = (folder() / "written").string();
  FILE* const pipe = popen(("cat > '" + path + "'").c_str(), "w");
  ASSERT_NE(pipe, nullptr);
  std::fputs("text", pipe);
  EXPECT_EQ(pclose(pipe), 0);
  EXPECT_EQ(ReadStream(path), "text");
}

TEST_F(InterposedTest, OtherProcessOptionsReachTheKernel) {
  char before[16] = {};
  char name[16] = {};
  ASSERT_EQ(prctl(PR_GET_NAME, before), 0);
  EXPECT_EQ(prctl(PR_SET_NAME, "interposed"), 0);
  EXPECT_EQ(prctl(PR_GET_NAME, name), 0);
  EXPECT_STREQ(name, "interposed");
  EXPECT_EQ(prctl(PR_SET_NAME, before), 0);
  EXPECT_EQ(prctl(PR_SET_PDEATHSIG, SIGTERM, 0, 0, 0), 0);
  int signal = 0;
  EXPECT_EQ(prctl(PR_GET_PDEATHSIG, &signal, 0, 0, 0), 0);
  EXPECT_EQ(signal, SIGTERM);
  EXPECT_EQ(prctl(PR_SET_PDEATHSIG, 0, 0, 0, 0), 0);
  EXPECT_EQ(prctl(667, 0, 0, 0, 0), -1);
  EXPECT_EQ(errno, EINVAL);
}

TEST_F(InterposedTest, NothingIsTheSetsWhenNoSetRuns) {
  set().files().Replace(SetFile::kDebugSwitch, "x");
  set().files().Replace(SetFile::kTop, "replaced");
  Set::Stop();
  EXPECT_FALSE(ReadStream(MemoryPath()));
  EXPECT_EQ(prctl(666, "x", 1), -1);
  EXPECT_EQ(errno, EINVAL);
  EXPECT_EQ(Output("/usr/bin/top --no-such-option 2>/dev/null").find("replaced"),
            std::string::npos);
}

TEST_F(InterposedTest, ReadersAndRestartsMayOverlap) {
  std::atomic<bool> stop{false};
  std::vector<std::thread> readers;
  for (int i = 0; i < 2; ++i) {
    readers.emplace_back([&stop] {
      while (!stop) {
        const std::optional<std::string> text = ReadStream(kGpuMemoryPath);
        EXPECT_TRUE(!text || text->find("SIZE_KIB") != std::string::npos);
        struct stat status = {};
        stat(kDebugPath, &status);
        prctl(666, "mark", 4);
      }
    });
  }
  for (int i = 0; i < 20; ++i) StartSet(i % 2 == 0 ? "uhd" : "fhd");
  stop = true;
  for (std::thread& reader : readers) reader.join();
}

TEST_F(InterposedTest, ChildOfAForkFindsItsOwnFigures) {
  const pid_t child = fork();
  if (child == 0) {
    const std::string path = "/proc/" + std::to_string(getpid()) + "/qm_memstat";
    FILE* const stream = std::fopen(path.c_str(), "r");
    _exit(stream != nullptr ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace tvset::testing
