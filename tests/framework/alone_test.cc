// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "set_fixture.h"

namespace orvane::test {
namespace {

using FrameworkAloneTest = SetFixture;

// The set's library then comes behind the C library in the order of the look-up.
TEST_F(FrameworkAloneTest, ProgramThatLinksNoLibraryOfTheSetRuns) {
  const std::string command =
      "ORVANE_STATE='" + (folder() / "alone").string() + "' " FRAMEWORK_ALONE " 2>&1";
  FILE* const program = popen(command.c_str(), "r");
  ASSERT_NE(program, nullptr);
  std::array<char, 256> line{};
  EXPECT_NE(std::fgets(line.data(), line.size(), program), nullptr);
  EXPECT_EQ(pclose(program), 0);
  EXPECT_STREQ(line.data(), "Permission denied, reads files\n");
}

}  // namespace
}  // namespace orvane::test
