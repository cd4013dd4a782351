// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/message_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::television {
namespace {

using ::testing::ElementsAre;
using ::testing::Optional;

TEST(ReadInteger, TakesWholeDecimalNumbersOnly) {
  EXPECT_THAT(ReadInteger("0"), Optional(0));
  EXPECT_THAT(ReadInteger("-12"), Optional(-12));
  EXPECT_THAT(ReadInteger("2147483647"), Optional(2147483647));
  for (const char* text : {"", "-", "+1", " 1", "1 ", "1.0", "0x10", "2147483648", "1e3"}) {
    EXPECT_EQ(ReadInteger(text), std::nullopt) << text;
  }
}

TEST(Split, KeepsEmptyParts) {
  EXPECT_THAT(Split("", ','), ElementsAre(""));
  EXPECT_THAT(Split("a,,b,", ','), ElementsAre("a", "", "b", ""));
}

TEST(ErrorReply, EscapesItsMessage) {
  EXPECT_EQ(
      ErrorReply("a \"b\""),
      R"({"error":{"code":9999,"message":"a \"b\"","name":"UnknownError"},"status":"error"})");
}

}  // namespace
}  // namespace orvane::television
