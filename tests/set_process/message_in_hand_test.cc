// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/message_in_hand.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

#include <gtest/gtest.h>

namespace orvane::set_process {
namespace {

// What another process has of the same memory.
MessageInHand OtherSideOf(const MessageInHand& message) {
  return MessageInHand(base::UniqueFd(dup(message.descriptor())));
}

TEST(MessageInHandTest, HasNoneAtFirst) {
  const MessageInHand message;
  EXPECT_FALSE(message.is_busy());
  EXPECT_FALSE(message.Last());
}

TEST(MessageInHandTest, IsSeenFromTheOtherSide) {
  const MessageInHand parent;
  MessageInHand child = OtherSideOf(parent);
  const auto before = std::chrono::steady_clock::now();
  child.Begin("sync", 7, "test.ext", "hello");
  EXPECT_TRUE(parent.is_busy());
  EXPECT_GE(parent.last_begin(), before);
  const HandledMessage message = parent.Last().value_or(HandledMessage{});
  EXPECT_EQ(message.what, "sync");
  EXPECT_EQ(message.context, 7);
  EXPECT_EQ(message.name, "test.ext");
  EXPECT_EQ(message.text, "hello");
}

TEST(MessageInHandTest, IsKnownWhenItIsDone) {
  MessageInHand message;
  message.Begin("post", 1, "test.ext", "hello");
  message.End();
  EXPECT_FALSE(message.is_busy());
  EXPECT_EQ(message.Last().value_or(HandledMessage{}).what, "post");
}

TEST(MessageInHandTest, CutsWhatIsTooLong) {
  MessageInHand message;
  message.Begin("sync", 1, std::string(5000, 'n'), std::string(100000, 'x'));
  const HandledMessage last = message.Last().value_or(HandledMessage{});
  EXPECT_EQ(last.name, std::string(1024, 'n'));
  EXPECT_EQ(last.text, std::string(MessageInHand::kMostText, 'x'));
}

TEST(MessageInHandTest, OutlivesTheProcessThatWroteIt) {
  MessageInHand message;
  const pid_t child = fork();
  if (child == 0) {
    message.Begin("sync", 1, "test.ext", "the last");
    raise(SIGKILL);
  }
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  EXPECT_TRUE(message.is_busy());
  EXPECT_EQ(message.Last().value_or(HandledMessage{}).text, "the last");
}

TEST(MessageInHandTest, CannotBeTakenAway) {
  const MessageInHand message;
  EXPECT_NE(ftruncate(message.descriptor(), 0), 0);
}

TEST(MessageInHandTest, RefusesADescriptorThatHoldsNone) {
  EXPECT_THROW(MessageInHand(base::UniqueFd(-1)), std::system_error);
}

}  // namespace
}  // namespace orvane::set_process
