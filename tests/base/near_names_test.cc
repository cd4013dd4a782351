// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/near_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::base {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::vector<std::string> kNames = {"getVersion",  "getUuid",     "getAppState",
                                         "setAppFocus", "registerKey", "registerKeyInSpecialMode"};

TEST(NearNames, FindsAMistypedName) {
  EXPECT_THAT(NearNames("getVerison", kNames), ElementsAre("getVersion"));
}

TEST(NearNames, IgnoresUpperAndLowerCase) {
  EXPECT_THAT(NearNames("getuuid", kNames, 1), ElementsAre("getUuid"));
}

TEST(NearNames, FindsNamesThatBeginSo) {
  EXPECT_THAT(NearNames("register", kNames),
              ElementsAre("registerKey", "registerKeyInSpecialMode"));
}

TEST(NearNames, FindsNothingForAnotherWord) {
  EXPECT_THAT(NearNames("playVideo", kNames), IsEmpty());
  EXPECT_THAT(NearNames("", kNames), IsEmpty());
  EXPECT_THAT(NearNames(std::string(100000, 'a'), kNames), IsEmpty());
}

TEST(NearNames, WritesTheQuestion) {
  EXPECT_EQ(DidYouMean({}), "");
  EXPECT_EQ(DidYouMean({"a"}), " Did you mean \"a\"?");
  EXPECT_EQ(DidYouMean({"a", "b", "c"}), " Did you mean \"a\", \"b\" or \"c\"?");
}

}  // namespace
}  // namespace orvane::base
