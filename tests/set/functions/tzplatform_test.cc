// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <tzplatform_config.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

using TzplatformTest = SetTest;

tzplatform_variable Variable(int number) { return static_cast<tzplatform_variable>(number); }

TEST_F(TzplatformTest, Variable61IsTheApplicationRoot) {
  EXPECT_STREQ(tzplatform_getname(Variable(61)), "TZ_USER_APP");
  EXPECT_EQ(tzplatform_getenv(Variable(61)), set().paths().app_root().string());
  EXPECT_EQ(set().paths().app_root(), set().paths().state_folder() / "apps_rw");
}

TEST_F(TzplatformTest, NamesAreSortedAndLeadBackToTheirNumbers) {
  std::string before;
  for (int id = 0; id < _TZPLATFORM_VARIABLES_COUNT_; ++id) {
    const std::string name = tzplatform_getname(Variable(id));
    EXPECT_LT(before, name);
    EXPECT_EQ(tzplatform_getid(name.c_str()), id);
    EXPECT_NE(tzplatform_getenv(Variable(id)), nullptr) << name;
    before = name;
  }
}

TEST_F(TzplatformTest, NumbersAndNamesOutsideTheListHaveNothing) {
  for (const int id : {-1, -128, int{_TZPLATFORM_VARIABLES_COUNT_}, 127}) {
    EXPECT_EQ(tzplatform_getenv(Variable(id)), nullptr) << id;
    EXPECT_EQ(tzplatform_getname(Variable(id)), nullptr) << id;
  }
  EXPECT_EQ(tzplatform_getid("TZ_NONE"), _TZPLATFORM_VARIABLES_INVALID_);
  EXPECT_EQ(tzplatform_getid(nullptr), _TZPLATFORM_VARIABLES_INVALID_);
}

TEST_F(TzplatformTest, ValueIsInternedAndOutlivesTheSet) {
  const char* root = tzplatform_getenv(TZ_USER_APP);
  EXPECT_EQ(tzplatform_getenv(TZ_USER_APP), root);
  const std::string text = root;
  Set::Stop();
  EXPECT_EQ(root, text);
}

TEST_F(TzplatformTest, BuildVariablesComeFromTheProfile) {
  EXPECT_STREQ(tzplatform_getenv(TZ_BUILD_ID), "orvane-uhd-1");
  set().features().Remove("tizen.org/system/build.id");
  EXPECT_STREQ(tzplatform_getenv(TZ_BUILD_ID), "");
}

}  // namespace
}  // namespace tvset::testing
