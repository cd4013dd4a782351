// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/content_policy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::server {
namespace {

using ::testing::HasSubstr;

std::string Why(std::string_view policy) {
  return WhyPolicyForbidsScript(policy, "http://127.0.0.1:8630");
}

TEST(ContentPolicyTest, LetsTheScriptInThatThePolicyAllows) {
  EXPECT_EQ(Why(""), "");
  EXPECT_EQ(Why("img-src 'none'"), "");
  EXPECT_EQ(Why("default-src 'self'"), "");
  EXPECT_EQ(Why("default-src 'none'; script-src 'SELF' 'nonce-x'"), "");
  EXPECT_EQ(Why("Script-Src *"), "");
  EXPECT_EQ(Why("script-src http://127.0.0.1:8630"), "");
  EXPECT_EQ(Why("script-src 127.0.0.1:8630;"), "");
  EXPECT_EQ(Why("script-src 'none'; script-src-elem 'self'"), "");
}

TEST(ContentPolicyTest, NamesTheDirectiveThatForbidsIt) {
  EXPECT_THAT(Why("default-src 'none'"), HasSubstr("add 'self' to default-src"));
  EXPECT_THAT(Why("script-src 'nonce-x'; default-src *"), HasSubstr("add 'self' to script-src"));
  EXPECT_THAT(Why("script-src-elem https://cdn.example; script-src 'self'"),
              HasSubstr("add 'self' to script-src-elem"));
  EXPECT_THAT(Why("script-src"), HasSubstr("add 'self' to script-src"));
}

TEST(ContentPolicyTest, KnowsThatStrictDynamicOutweighsSelf) {
  EXPECT_THAT(Why("script-src 'self' 'strict-dynamic' 'nonce-x'"),
              HasSubstr("take 'strict-dynamic' out of script-src"));
}

TEST(ContentPolicyTest, KnowsOriginsWithAnyPort) {
  EXPECT_EQ(Why("script-src 127.0.0.1:*"), "");
  EXPECT_EQ(Why("script-src http://127.0.0.1:*"), "");
}

TEST(ContentPolicyTest, LooksAtEachOfSeveralPolicies) {
  EXPECT_THAT(Why("script-src 'self', default-src 'none'"), HasSubstr("default-src"));
  EXPECT_EQ(Why("script-src 'self', default-src *"), "");
}

TEST(ContentPolicyTest, KnowsWhatASandboxTakesAway) {
  EXPECT_THAT(Why("sandbox"), HasSubstr("add allow-scripts to sandbox"));
  EXPECT_THAT(Why("sandbox allow-scripts"), HasSubstr("add allow-same-origin to sandbox"));
  EXPECT_EQ(Why("sandbox allow-scripts allow-same-origin"), "");
}

TEST(ContentPolicyTest, KnowsWhetherTheSimulatorMayShowThePage) {
  const auto why = [](std::string_view policy) {
    return WhyPolicyForbidsFrame(policy, "http://localhost:8631");
  };
  EXPECT_EQ(why("default-src 'none'"), "");
  EXPECT_EQ(why("frame-ancestors http://localhost:*"), "");
  EXPECT_EQ(why("frame-ancestors *"), "");
  EXPECT_THAT(why("frame-ancestors 'none'"), HasSubstr("frame-ancestors"));
  EXPECT_THAT(why("frame-ancestors 'self' https://localhost:8631"), HasSubstr("frame-ancestors"));
}

}  // namespace
}  // namespace orvane::server
