// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <sys/wait.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "files_fixture.h"

namespace tvset::testing {
namespace {

constexpr std::chrono::milliseconds kPeriod(10);

double Seconds(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// Uses that share of one processor, in short periods, or as much of it as the machine lets it.
class Burner {
 public:
  explicit Burner(double share) : thread_([this, share] { Run(share); }) {}
  ~Burner() {
    stop_ = true;
    thread_.join();
  }
  Burner(const Burner&) = delete;
  Burner& operator=(const Burner&) = delete;

 private:
  void Run(double share) {
    const double work = share * std::chrono::duration<double>(kPeriod).count();
    while (!stop_) {
      const auto next = std::chrono::steady_clock::now() + kPeriod;
      const double begin = Seconds(CLOCK_THREAD_CPUTIME_ID);
      while (Seconds(CLOCK_THREAD_CPUTIME_ID) - begin < work) {
      }
      std::this_thread::sleep_until(next);
    }
  }

  std::atomic<bool> stop_{false};
  std::thread thread_;
};

class TopTest : public FilesTest {
 protected:
  static std::string Command(const std::string& pid) { return "/usr/bin/top -b -n 1 -p " + pid; }

  // Where the share does not count, nor how long it is measured.
  static std::string QuickCommand(const std::string& pid) { return Command(pid) + " -d 0.01"; }

  // What the library asks for a process.
  static std::string Column(const std::string& pid) {
    return Output(Command(pid) + " | grep " + pid + " | awk '{print $7}'");
  }

  struct Reading {
    double share;     // as the tool prints it
    double expected;  // by this process's CPU clock, around the tool's window
  };
  static Reading ReadShare() {
    const double used = Seconds(CLOCK_PROCESS_CPUTIME_ID);
    const double before = Seconds(CLOCK_MONOTONIC);
    const double share = std::stod(Column(Pid()));
    const double passed = Seconds(CLOCK_MONOTONIC) - before;
    return {share, 100 * (Seconds(CLOCK_PROCESS_CPUTIME_ID) - used) / passed};
  }

  // Other programs may keep the burners from the processor for a while, inside the tool's window or
  // outside it: of some readings one has to agree with what the process really used. `share` is the
  // most that the burners take.
  static void ExpectShareOf(double share) {
    constexpr int kReadings = 30;
    constexpr double kTolerance = 8;
    Reading reading{};
    for (int i = 0; i < kReadings; ++i) {
      reading = ReadShare();
      if (std::abs(reading.share - reading.expected) < kTolerance && reading.share > share / 4)
        break;
    }
    EXPECT_NEAR(reading.share, reading.expected, kTolerance);
    EXPECT_GT(reading.share, share / 4);
    EXPECT_LT(reading.share, 1.5 * share);
  }

  // The id of a process that was, and is no more.
  static std::string DeadPid() {
    const pid_t child = fork();
    if (child == 0) _exit(0);
    waitpid(child, nullptr, 0);
    return std::to_string(child);
  }
};

TEST_F(TopTest, RowBeginsWithTheProcessAndHasTheShareSeventh) {
  const std::vector<std::vector<std::string>> lines = Words(Output(QuickCommand(Pid())));
  ASSERT_EQ(lines.size(), 2u);
  ASSERT_EQ(lines[0].size(), lines[1].size());
  EXPECT_EQ(lines[0][0], "PID");
  EXPECT_EQ(lines[0][6], "%CPU");
  EXPECT_EQ(lines[1][0], Pid());
  EXPECT_EQ(lines[1][1], std::to_string(getppid()));
  EXPECT_EQ(lines[1][7], "set_files_test");
}

TEST_F(TopTest, HeadingsHaveNoDigitThatCouldBeAProcessId) {
  const std::string output = Output(QuickCommand(Pid()));
  const std::string headings = output.substr(0, output.find('\n'));
  EXPECT_EQ(headings.find_first_of("0123456789"), std::string::npos);
}

TEST_F(TopTest, ShareIsWhatTheProcessBurns) {
  Burner burner(0.4);
  ExpectShareOf(40);
}

TEST_F(TopTest, SharesOfThreadsAddUp) {
  Burner one(0.35);
  Burner two(0.35);
  ExpectShareOf(70);
}

TEST_F(TopTest, IdleProcessHasNextToNothing) { EXPECT_LT(std::stod(Column(Pid())), 20); }

TEST_F(TopTest, DeadProcessHasNoRow) {
  const std::string pid = DeadPid();
  EXPECT_EQ(Words(Output(Command(pid))).size(), 1u);
  EXPECT_EQ(Column(pid), "");
}

TEST_F(TopTest, ToolAnswersAnythingElseWithUsage) {
  for (const char* arguments :
       {"", "-b", "-p", "-p x", "-b -n 2 -p 1", "-d -p 1", "-d -1 -p 1", "-d 61 -p 1", "-h"}) {
    const std::string command = std::string(SET_TOP) + " " + arguments + " 2>/dev/null; echo $?";
    EXPECT_EQ(Output(command), "2\n") << arguments;
  }
}

TEST_F(TopTest, TextTakesThePlaceOfTheOutput) {
  set().files().Replace(SetFile::kTop, "{pid} it's 3 4 5 6 42.5 eight\n");
  EXPECT_EQ(Output(Command(Pid())), Pid() + " it's 3 4 5 6 42.5 eight\n");
  EXPECT_EQ(Column(Pid()), "42.5\n");
}

TEST_F(TopTest, FileInTheFolderTakesThePlaceOfTheOutput) {
  PutFile(SetFile::kTop, "{pid} 2 3 4 5 6 7 8\n");
  EXPECT_EQ(Column(Pid()), "7\n");
}

TEST_F(TopTest, ExecutableFileInTheFolderIsRunWithTheArguments) {
  const std::filesystem::path path = PutFile(SetFile::kTop, "#!/bin/sh\necho \"$@\"\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  EXPECT_EQ(Output(Command(Pid())), "-b -n 1 -p " + Pid() + "\n");
}

TEST_F(TopTest, RemovedToolPrintsNothing) {
  set().files().Remove(SetFile::kTop);
  EXPECT_EQ(Column(Pid() + " 2>/dev/null"), "");
  EXPECT_EQ(Output(Command(Pid()) + " 2>/dev/null; echo $?"), "127\n");
}

TEST_F(TopTest, FaultKeepsTheCommandFromBeingStarted) {
  set().faults().Fail("file:top", EAGAIN, FaultMode::kOnce);
  errno = 0;
  EXPECT_EQ(popen(Command(Pid()).c_str(), "r"), nullptr);
  EXPECT_EQ(errno, EAGAIN);
}

TEST_F(TopTest, FolderWithQuotesInItsNameIsNoTrouble) {
  Set::Start(Options{folder() / "it's a \"state\"", "uhd"});
  PutFile(SetFile::kTop, "{pid} 2 3 4 5 6 7 8\n");
  EXPECT_EQ(Column(Pid()), "7\n");
}

}  // namespace
}  // namespace tvset::testing
