// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Handles that are not alive: invented, mixed up, kept too long.

#include <limits>

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// What the calls answer that do nothing: the buffer, XW_ERROR twice, no data.
constexpr char kNothing[] = "untouched -1 -1 null";

TEST_F(HostTest, IgnoresInventedHandles) {
  auto instance = CreateInstance(Load("invented_handles", "test.inventedHandles"));

  for (const int32_t handle : {0, -1, instance->handle() + 1, std::numeric_limits<int32_t>::max(),
                               std::numeric_limits<int32_t>::min()}) {
    const size_t before = warnings().size();
    EXPECT_EQ(instance->SendSyncMessage(std::to_string(handle)), kNothing);
    EXPECT_EQ(warnings().size(), before + 16) << handle;
  }
  EXPECT_THAT(warnings(),
              Each(AllOf(HasSubstr("is not alive"), HasSubstr("test.inventedHandles"))));
  EXPECT_THAT(page().messages(), IsEmpty());
}

TEST_F(HostTest, NamesTheCallAndTheHandle) {
  auto instance = CreateInstance(Load("invented_handles", "test.inventedHandles"));

  instance->SendSyncMessage("123456");

  EXPECT_THAT(warnings(), Contains(HasSubstr("SetSyncReply: instance handle 123456 ")));
  EXPECT_THAT(warnings(), Contains(HasSubstr("SetExtraJSEntryPoints: extension handle 123456 ")));
}

TEST_F(HostTest, TellsExtensionAndInstanceHandlesApart) {
  Extension* extension = Load("invented_handles", "test.inventedHandles");
  auto instance = CreateInstance(extension);

  instance->SendSyncMessage(std::to_string(extension->handle()));

  EXPECT_THAT(warnings(), Contains(AllOf(HasSubstr("PostMessage: "),
                                         HasSubstr("is the handle of an extension"))));
}

TEST_F(HostTest, IgnoresPostsAfterDestruction) {
  Extension* extension = Load("post_after_destruction", "test.postAfterDestruction");
  auto instance = CreateInstance(extension);
  const std::string dead = std::to_string(CreateInstance(extension)->handle());

  instance->PostMessage("go");

  EXPECT_THAT(page().messages(), IsEmpty());
  EXPECT_THAT(page().binary_messages(), IsEmpty());
  EXPECT_EQ(warnings().size(), 4u);
  EXPECT_THAT(warnings(), Each(HasSubstr("instance handle " + dead + " is not alive")));
}

TEST_F(HostTest, NeverGivesHandleTwice) {
  Extension* echo = Load("echo", "test.echo");
  int32_t last = echo->handle();

  for (int i = 0; i < 100; ++i) {
    const int32_t handle = CreateInstance(echo)->handle();
    ASSERT_GT(handle, last);
    last = handle;
  }
}

TEST_F(HostTest, TellsOnlyTheHostWhoseCallbackRuns) {
  std::vector<std::string> others;
  HostOptions other_options;
  other_options.warn = [&](const std::string& text) { others.push_back(text); };
  ExtensionHost other(other_options);
  auto instance = CreateInstance(Load("invented_handles", "test.inventedHandles"));

  instance->SendSyncMessage("0");

  EXPECT_THAT(others, IsEmpty());
  EXPECT_EQ(warnings().size(), 16u);
}

}  // namespace
}  // namespace orvane::extensions
