// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json.h"

#include <string>

#include <gmock/gmock.h>

#include "base/utf8.h"

namespace orvane::base {
namespace {

using ::testing::HasSubstr;

std::string ErrorOf(std::string_view text) {
  try {
    ParseJson(text);
  } catch (const JsonError& error) {
    return error.what();
  }
  return "";
}

std::string Nested(size_t levels, char open, char close) {
  return std::string(levels, open) + std::string(levels, close);
}

TEST(JsonTest, KeepsIntegersOf64BitsExactly) {
  for (const char* text : {"18446744073709551615", "-9223372036854775808", "9007199254740993"}) {
    EXPECT_EQ(JsonText(ParseJson(text)), text);
  }
}

TEST(JsonTest, RefusesWhatIsNoJsonAndSaysWhere) {
  EXPECT_THAT(ErrorOf("{\"a\":1,}"), HasSubstr("wrong at byte 8."));
  EXPECT_THAT(ErrorOf(""), HasSubstr("no JSON"));
  EXPECT_THAT(ErrorOf("1 2"), HasSubstr("no JSON"));
  EXPECT_THAT(ErrorOf("\"\xff\""), HasSubstr("no JSON"));
}

TEST(JsonTest, RefusesANumberBeyondADouble) {
  EXPECT_THAT(ErrorOf("{\"name\":1e999}"), HasSubstr("beyond the range of a double"));
}

TEST(JsonTest, BoundsTheDepth) {
  EXPECT_EQ(ErrorOf(Nested(kMaxJsonDepth, '[', ']')), "");
  EXPECT_THAT(ErrorOf(Nested(kMaxJsonDepth + 1, '[', ']')), HasSubstr("deeper than 64"));
  std::string objects;
  for (int i = 0; i < 100000; ++i) objects += "{\"a\":";
  EXPECT_THAT(ErrorOf(objects), HasSubstr("deeper than 64"));
  EXPECT_THAT(ErrorOf(std::string(1000000, '[')), HasSubstr("deeper than 64"));
}

TEST(JsonTest, ReplacesHalfCharacters) {
  EXPECT_EQ(ParseJson(R"("a\ud800b")"),
            "a\xef\xbf\xbd"
            "b");
  EXPECT_EQ(ParseJson(R"("\ud83d\ude00")"), "😀");
}

TEST(JsonTest, WritesAnyBytesAsWellFormedText) {
  EXPECT_EQ(JsonText(Json("a\xff")), "\"a\xef\xbf\xbd\"");
  EXPECT_EQ(JsonText(Json(std::string("\0", 1))), R"("\u0000")");
}

TEST(JsonTest, ShowsTheBeginningOfALongValue) {
  EXPECT_EQ(Excerpt(Json("short")), "\"short\"");
  const std::string excerpt = Excerpt(Json(std::string(59, 'a') + "é and more"));
  EXPECT_LT(excerpt.size(), 70U);
  EXPECT_EQ(WellFormedUtf8(excerpt), excerpt);
}

}  // namespace
}  // namespace orvane::base
