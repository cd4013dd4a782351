// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Synchronous messages: who replies when, and what ends a wait.

#include <thread>

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// What the HostError says that `call` throws.
template <typename Call>
std::string ErrorOf(Call&& call) {
  try {
    call();
  } catch (const HostError& error) {
    return error.what();
  }
  ADD_FAILURE() << "no HostError";
  return "";
}

TEST_F(HostTest, ReturnsReplyGivenByTheHandler) {
  auto instance = CreateInstance(Load("echo", "test.echo"));
  const std::string huge(8 << 20, 'x');

  EXPECT_EQ(instance->SendSyncMessage("ping"), "ping");
  EXPECT_EQ(instance->SendSyncMessage(""), "");
  EXPECT_EQ(instance->SendSyncMessage(huge), huge);
}

TEST_F(HostTest, ReturnsReplyGivenByAnotherThreadBeforeTheHandlerReturns) {
  auto instance = CreateInstance(Load("late_reply", "test.lateReply"));

  EXPECT_EQ(instance->SendSyncMessage("inside"), "late inside");
}

TEST_F(HostTest, WaitsForReplyFromAnotherThread) {
  auto instance = CreateInstance(Load("late_reply", "test.lateReply"));

  for (int i = 0; i < 300; ++i) {
    ASSERT_EQ(instance->SendSyncMessage(std::to_string(i)), "late " + std::to_string(i));
  }
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(HostTest, IgnoresSecondReply) {
  auto instance = CreateInstance(Load("double_reply", "test.doubleReply"));

  EXPECT_EQ(instance->SendSyncMessage("one"), "first");
  EXPECT_EQ(instance->SendSyncMessage("two"), "first");

  EXPECT_THAT(warnings(), ElementsAre(AllOf(HasSubstr("SetSyncReply"), HasSubstr("second"),
                                            HasSubstr("test.doubleReply")),
                                      HasSubstr("SetSyncReply")));
}

TEST_F(HostTest, IgnoresReplyThatNobodyWaitsFor) {
  auto instance = CreateInstance(Load("double_reply", "test.doubleReply"));

  instance->PostMessage("no synchronous message");

  EXPECT_THAT(warnings(),
              ElementsAre(AllOf(HasSubstr("no synchronous message waits"), HasSubstr("unasked"))));
}

TEST_F(HostTest, GivesUpAtTheDeadlineAndNamesTheMessage) {
  options().sync_deadline = std::chrono::milliseconds(20);
  auto instance = CreateInstance(Load("no_reply", "test.noReply"));
  const std::string message = "{\"cmd\":\"Test_call\"}" + std::string(300, '.') + "end";

  const std::string error = ErrorOf([&] { instance->SendSyncMessage(message); });

  EXPECT_THAT(error, AllOf(HasSubstr("20 ms"), HasSubstr("Test_call"), HasSubstr("test.noReply"),
                           HasSubstr("must call SetSyncReply"), Not(HasSubstr("end"))));
  EXPECT_EQ(instance->SendSyncMessage("reply"), "replied");
}

TEST_F(HostTest, FailsAtOnceWhenTheHandlerThrows) {
  auto instance = CreateInstance(Load("throwing", "test.throwing"));

  const std::string error = ErrorOf([&] { instance->SendSyncMessage("the message"); });

  EXPECT_THAT(error, AllOf(HasSubstr("thrown in a synchronous handler"), HasSubstr("the message")));
}

TEST_F(HostTest, FailsAtOnceWithoutHandler) {
  auto instance = CreateInstance(Load("null_callbacks", "test.nullCallbacks"));

  EXPECT_THAT(ErrorOf([&] { instance->SendSyncMessage("the message"); }),
              AllOf(HasSubstr("no handler for synchronous messages"), HasSubstr("the message")));
}

TEST_F(HostTest, EndsWaitEmptyWhenTheHandlerLeadsToDestruction) {
  auto instance = CreateInstance(Load("no_reply", "test.noReply"));
  page().on_message = [&](std::string_view) { instance.reset(); };

  const std::string reply = instance->SendSyncMessage("never");

  EXPECT_EQ(reply, "");
  EXPECT_THAT(journal(), ElementsAre("destroyed"));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(HostTest, EndsWaitEmptyWhenAnotherThreadEndsWaits) {
  options().sync_deadline = std::chrono::minutes(1);
  auto instance = CreateInstance(Load("no_reply", "test.noReply"));
  std::thread other([&] {
    page().WaitForMessages(1);
    instance->EndWaits();
  });

  const std::string reply = instance->SendSyncMessage("never");

  other.join();
  EXPECT_EQ(reply, "");
  EXPECT_EQ(instance->SendSyncMessage("never again"), "");
  EXPECT_EQ(instance->SendSyncMessage("reply"), "replied");
}

TEST_F(HostTest, EndsWaitEmptyWhenAnotherThreadDestroysTheInstance) {
  options().sync_deadline = std::chrono::minutes(1);
  auto instance = CreateInstance(Load("no_reply", "test.noReply"));
  Instance* borrowed = instance.get();
  std::thread other([&] {
    page().WaitForMessages(1);
    instance.reset();
  });

  const std::string reply = borrowed->SendSyncMessage("never");

  other.join();
  EXPECT_EQ(reply, "");
  EXPECT_THAT(journal(), IsEmpty());
  host().catalogue();
  EXPECT_THAT(journal(), ElementsAre("destroyed"));
}

TEST_F(HostTest, AnswersNestedMessageFirst) {
  auto instance = CreateInstance(Load("nested", "test.nested"));
  std::string nested_reply;
  page().on_message = [&](std::string_view text) {
    if (text == "outer") nested_reply = instance->SendSyncMessage("inner");
  };

  const std::string reply = instance->SendSyncMessage("outer");

  EXPECT_EQ(nested_reply, "reply to inner");
  EXPECT_EQ(reply, "reply to outer");
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(HostTest, AnswersMessageToAnotherInstanceInsideHandler) {
  Extension* nested = Load("nested", "test.nested");
  Recorder other_page;
  auto other = nested->CreateInstance(&other_page);
  auto instance = CreateInstance(nested);
  std::string other_reply;
  page().on_message = [&](std::string_view) { other_reply = other->SendSyncMessage("other"); };

  EXPECT_EQ(instance->SendSyncMessage("first"), "reply to first");
  EXPECT_EQ(other_reply, "reply to other");
}

}  // namespace
}  // namespace orvane::extensions
