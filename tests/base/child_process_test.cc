// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/child_process.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

namespace orvane::base {
namespace {

constexpr std::chrono::seconds kLong(30);

TEST(ChildProcessTest, FindsAProgramOnThePath) {
  EXPECT_NE(FindProgram({"no-such-program-here", "sh"}), "");
  EXPECT_EQ(FindProgram({"no-such-program-here"}), "");
}

TEST(ChildProcessTest, RefusesAProgramThatIsNotThere) {
  EXPECT_THROW(ChildProcess({"/no/such/program"}, {}), std::system_error);
}

TEST(ChildProcessTest, GivesItsDescriptors) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ChildProcess child({"/bin/sh", "-c", "echo hello >&5"}, {{ends[1], 5}});
  close(ends[1]);

  char text[16] = {};
  EXPECT_EQ(read(ends[0], text, sizeof text), 6);

  EXPECT_STREQ(text, "hello\n");
  close(ends[0]);
}

TEST(ChildProcessTest, GivesDescriptorsThatWantEachOthersNumbers) {
  int one[2];
  int other[2];
  ASSERT_EQ(pipe(one), 0);
  ASSERT_EQ(pipe(other), 0);
  const std::string command =
      "echo one >&" + std::to_string(other[1]) + "; echo other >&" + std::to_string(one[1]);
  ChildProcess child({"/bin/bash", "-c", command}, {{one[1], other[1]}, {other[1], one[1]}});
  close(one[1]);
  close(other[1]);

  char text[16] = {};
  EXPECT_EQ(read(one[0], text, sizeof text), 4);
  EXPECT_STREQ(text, "one\n");
  EXPECT_EQ(read(other[0], text, sizeof text), 6);

  EXPECT_STREQ(text, "other\n");
  close(one[0]);
  close(other[0]);
}

TEST(ChildProcessTest, EndsWithItsOwner) {
  pid_t pid = 0;
  {
    ChildProcess child({"/bin/sleep", "600"}, {});
    pid = child.pid();
    EXPECT_FALSE(child.end());
  }

  EXPECT_EQ(kill(pid, 0), -1);
  EXPECT_EQ(errno, ESRCH);
}

TEST(ChildProcessTest, IsWaitedForAsLongAsPatienceLasts) {
  ChildProcess child({"/bin/sh", "-c", "read line <&5"}, {});
  EXPECT_TRUE(child.Wait(kLong));  // there is nothing to read from
  ChildProcess sleeper({"/bin/sleep", "600"}, {});
  EXPECT_FALSE(sleeper.Wait(std::chrono::milliseconds(20)));
}

TEST(ChildProcessTest, KillsOneThatDoesNotListen) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ChildProcess child({"/bin/sh", "-c", "trap '' TERM; echo x >&5; while :; do sleep 600; done"},
                     {{ends[1], 5}});
  close(ends[1]);
  char text[2] = {};
  ASSERT_EQ(read(ends[0], text, sizeof text), 2);  // it has its trap

  child.Stop(std::chrono::milliseconds(50));

  EXPECT_TRUE(child.end());
  close(ends[0]);
}

TEST(ChildProcessTest, LeavesAloneWhatIsStartedAlone) {
  EXPECT_TRUE(ChildProcess::StartAlone({"/bin/true", "an argument"}));
}

TEST(ChildProcessTest, StopsAtOnceWhatHasEnded) {
  ChildProcess child({"/bin/true"}, {});

  child.Stop(kLong);

  EXPECT_TRUE(child.end());
}

}  // namespace
}  // namespace orvane::base
