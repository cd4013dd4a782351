// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The life of instances and of their host.

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(HostTest, CallsBackInOrderWithDataReadableToTheEnd) {
  Extension* lifecycle = Load("lifecycle", "test.lifecycle");
  auto first = CreateInstance(lifecycle);
  auto second = CreateInstance(lifecycle);

  second->PostMessage("hello");
  first.reset();
  second.reset();
  EndHost();

  EXPECT_THAT(journal(), ElementsAre("created 1", "created 2", "message 2 hello", "destroyed 1",
                                     "destroyed 2", "shutdown", "unloaded"));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(HostTest, DeliversPostsFromCreatedAndDestroyed) {
  auto instance = CreateInstance(Load("lifecycle", "test.lifecycle"));
  EXPECT_THAT(page().messages(), ElementsAre("from created"));

  instance.reset();

  EXPECT_THAT(page().messages(), ElementsAre("from created", "from destroyed"));
}

TEST_F(HostTest, AllowsNullCallbacks) {
  auto instance = CreateInstance(Load("null_callbacks", "test.nullCallbacks"));

  instance.reset();
  EndHost();

  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(HostTest, GivesNoInstanceWhenCreatedThrows) {
  Extension* throwing = Load("throwing_created", "test.throwing");

  EXPECT_THROW(CreateInstance(throwing), HostError);

  EndHost();
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(HostTest, SurvivesDestroyedAndShutdownThatThrow) {
  auto instance = CreateInstance(Load("throwing", "test.throwing"));

  instance.reset();
  EndHost();

  EXPECT_THAT(journal(), ElementsAre("destroyed"));
  EXPECT_THAT(warnings(),
              ElementsAre(HasSubstr("thrown in destroyed"),
                          AllOf(HasSubstr("shutdown callback"), HasSubstr("unknown type"))));
}

TEST_F(HostTest, RefusesInstanceWithoutClient) {
  Extension* echo = Load("echo", "test.echo");

  EXPECT_THROW(echo->CreateInstance(nullptr), HostError);
}

TEST_F(HostTest, DestroysInstancesThatAreLeftBeforeShutdown) {
  auto instance = CreateInstance(Load("lifecycle", "test.lifecycle"));

  EndHost();

  EXPECT_THAT(journal(), ElementsAre("created 1", "destroyed 1", "shutdown", "unloaded"));
  EXPECT_THROW(instance->PostMessage("too late"), HostError);
  EXPECT_THROW(instance->SendSyncMessage("too late"), HostError);
}

TEST_F(HostTest, KeepsLibraryWhoseCallbackEndsTheHost) {
  // A copy: it stays in use until the process ends.
  CopyExtension("no_reply");
  ASSERT_TRUE(host().LoadFile(folder() / "libno_reply.so"));
  auto instance = CreateInstance(host().Find("test.noReply"));
  page().on_message = [&](std::string_view) { EndHost(); };

  EXPECT_EQ(instance->SendSyncMessage("never"), "");

  EXPECT_THAT(journal(), ElementsAre("destroyed"));
  EXPECT_THAT(warnings(), ElementsAre(HasSubstr("stays loaded")));
}

TEST_F(HostTest, IgnoresSetCallsAfterInitialize) {
  Extension* extension = Load("late_set", "test.lateSet");
  auto instance = CreateInstance(extension);

  EXPECT_EQ(instance->SendSyncMessage("set"), "-1");
  EXPECT_EQ(instance->SendSyncMessage("still the first handler"), "-1");
  instance.reset();

  EXPECT_EQ(extension->name(), "test.lateSet");
  EXPECT_EQ(extension->api(), "early script");
  EXPECT_THAT(extension->registration().entry_points, IsEmpty());
  EXPECT_THAT(extension->registration().permissions, IsEmpty());
  EndHost();
  EXPECT_THAT(journal(), IsEmpty());
  EXPECT_EQ(warnings().size(), 18u);
  EXPECT_THAT(warnings(),
              Each(AllOf(HasSubstr("only while XW_Initialize runs"), HasSubstr("test.lateSet"))));
}

}  // namespace
}  // namespace orvane::extensions
