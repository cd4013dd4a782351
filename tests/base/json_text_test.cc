// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_text.h"

#include <string>

#include <gtest/gtest.h>

namespace orvane::base {
namespace {

std::string Json(std::string_view text) {
  std::string json;
  AppendJsonString(text, &json);
  return json;
}

TEST(JsonTextTest, EscapesWhatJsonDoesNotAllow) {
  EXPECT_EQ(Json("plain / \"quoted\" \\ \n\r\t"), R"("plain / \"quoted\" \\ \n\r\t")");
  EXPECT_EQ(Json(std::string("\0\x1f\b", 3)), R"("\u0000\u001f\u0008")");
  EXPECT_EQ(Json(""), R"("")");
}

TEST(JsonTextTest, LeavesCharactersBeyondAsciiAsTheyAre) { EXPECT_EQ(Json("é😀"), "\"é😀\""); }

TEST(JsonTextTest, AppendsToWhatIsThere) {
  std::string json = "[";
  AppendJsonString("a", &json);
  EXPECT_EQ(json, "[\"a\"");
}

TEST(WellFormedTest, LeavesWellFormedTextAlone) {
  const std::string text = "a é 中 😀 \xed\x9f\xbf \xee\x80\x80 \xf4\x8f\xbf\xbf, and long enough";
  EXPECT_TRUE(IsWellFormed(text));
  EXPECT_EQ(WellFormed(text), text);
}

TEST(WellFormedTest, ReplacesEachByteThatBelongsToNoCharacter) {
  EXPECT_EQ(WellFormed("a\xff"
                       "b"),
            "a\xef\xbf\xbd"
            "b");
  EXPECT_EQ(WellFormed("\xc3"), "\xef\xbf\xbd");
  EXPECT_EQ(WellFormed("12345678\x80 12345678"), "12345678\xef\xbf\xbd 12345678");
}

TEST(WellFormedTest, RefusesLongFormsSurrogatesAndWhatLiesAboveTheLastCharacter) {
  for (const char* text : {"\xc0\xaf", "\xe0\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80",
                           "\xf0\x80\x80\x80", "\xf5\x80\x80\x80", "\xe4\xb8", "\xf0\x9f\x98"}) {
    EXPECT_FALSE(IsWellFormed(text));
    EXPECT_TRUE(IsWellFormed(WellFormed(text)));
  }
}

}  // namespace
}  // namespace orvane::base
