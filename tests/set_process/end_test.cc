// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>

#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

using EndTest = SetProcessTest;

TEST_F(EndTest, EndsWhenTheServerSaysSo) {
  Start();
  Sync(7, "hello", kTester);
  SendFrame({{"op", "shutdown"}});
  EXPECT_EQ(WaitForExit(), 0);
}

TEST_F(EndTest, DestroysInstancesOnTheWay) {
  Start();
  Sync(7, "hello", kTester);
  SendFrame({{"op", "shutdown"}});
  EXPECT_THAT(WaitForLog("TESTER", 2), testing::ElementsAre("created", "destroyed"));
}

TEST_F(EndTest, EndsWhenTheServerIsGone) {
  Start();
  CloseSocket();
  EXPECT_EQ(WaitForExit(), 0);
}

TEST_F(EndTest, EndsWhenTheServerIsGoneWhileAHandlerIsBusy) {
  Start();
  Post(7, "hang", kTester);
  WaitForMessage("post");
  CloseSocket();
  EXPECT_EQ(WaitForExit(), EXIT_FAILURE);
}

TEST_F(EndTest, NamesTheMessageThatEndedIt) {
  Start();
  Post(9, "abort:now", kTester);
  EXPECT_EQ(WaitForExit(), 128 + SIGABRT);
  const auto message = WaitForMessage("post");
  EXPECT_EQ(message.context, 9);
  EXPECT_EQ(message.text, "abort:now");
}

TEST_F(EndTest, CrashesForATestThatAsksForIt) {
  Start();
  SendFrame(
      base::ParseJson(R"({"op":"control","id":1,"method":"debug.crash","params":{"signal":11}})"));
  EXPECT_EQ(WaitForMessage("control").name, "debug.crash");
  // A sanitizer may answer the signal in its own way, but the process ends.
  EXPECT_NE(WaitForExit(), 0);
}

TEST_F(EndTest, CrashesForNobodyElse) {
  Start({{"testHooks", false}});
  EXPECT_THAT(ControlError("debug.crash"), HasSubstr("for tests"));
  EXPECT_THAT(ControlError("debug.log", R"({"text":"x"})"), HasSubstr("for tests"));
}

TEST_F(EndTest, EndsAfterBytesThatAreNoFrames) {
  Spawn();
  SendRaw("\xff\xff\xff\xff and more");
  EXPECT_EQ(WaitForExit(), 2);
}

TEST_F(EndTest, LeavesTheTerminalsInterruptToTheServer) {
  Start();
  kill(pid(), SIGINT);
  EXPECT_EQ(Sync(7, "still here", kTester).at("result"), "did still here");
}

}  // namespace
}  // namespace orvane::television
