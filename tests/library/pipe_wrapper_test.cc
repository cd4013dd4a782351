// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <array>
#include <type_traits>

#include "orvane/orvane_pipewrapper.h"
#include "set_fixture.h"
#include "system_fakes.h"

namespace orvane::test {
namespace {

using extension::orvane::PipeWrapper;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

static_assert(!std::is_copy_constructible_v<PipeWrapper>);
static_assert(!std::is_copy_assignable_v<PipeWrapper>);

class PipeWrapperTest : public SetFixture {
 protected:
  static std::string FirstLine(FILE* pipe) {
    std::array<char, 100> buffer{};
    return fgets(buffer.data(), static_cast<int>(buffer.size()), pipe) == nullptr ? ""
                                                                                  : buffer.data();
  }

  SystemFakes system_;
};

TEST_F(PipeWrapperTest, ReadsWhatAShellCommandPrints) {
  PipeWrapper wrapper("echo one two three | awk '{print $2}'");
  ASSERT_NE(wrapper.getPipe(), nullptr);
  EXPECT_EQ(FirstLine(wrapper.getPipe()), "two\n");
  EXPECT_EQ(FirstLine(wrapper.getPipe()), "");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(PipeWrapperTest, StartsNothingForAnEmptyCommand) {
  {
    PipeWrapper wrapper("");
    EXPECT_EQ(wrapper.getPipe(), nullptr);
  }
  EXPECT_THAT(system_.commands(), IsEmpty());
  EXPECT_EQ(system_.open_pipes(), 0);
  EXPECT_THAT(Messages(),
              ElementsAre("E orvane_pipewrapper.cc PipeWrapper: Provided command is empty"));
}

TEST_F(PipeWrapperTest, LogsACommandThatCannotBeStarted) {
  system_.FailCommands();
  {
    PipeWrapper wrapper("echo 100%s");
    EXPECT_EQ(wrapper.getPipe(), nullptr);
  }
  EXPECT_EQ(system_.open_pipes(), 0);
  EXPECT_THAT(Messages(), ElementsAre("E orvane_pipewrapper.cc PipeWrapper: Failed to execute "
                                      "command: echo 100%s"));
}

TEST_F(PipeWrapperTest, WaitsForTheCommandWhoseOutputNobodyRead) {
  const std::filesystem::path mark = folder() / "mark";
  { PipeWrapper wrapper("trap '' PIPE; echo unread 2> /dev/null; : > '" + mark.string() + "'"); }
  EXPECT_TRUE(std::filesystem::exists(mark));
  EXPECT_EQ(system_.open_pipes(), 0);
}

TEST_F(PipeWrapperTest, TakesACommandThatPrintsNothing) {
  PipeWrapper wrapper("true");
  ASSERT_NE(wrapper.getPipe(), nullptr);
  EXPECT_EQ(FirstLine(wrapper.getPipe()), "");
  EXPECT_THAT(Messages(), IsEmpty());
}

}  // namespace
}  // namespace orvane::test
