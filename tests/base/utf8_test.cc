// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/utf8.h"

#include <gtest/gtest.h>

namespace orvane::base {
namespace {

TEST(WellFormedUtf8Test, LeavesWellFormedTextAlone) {
  const std::string text = "a é 中 😀 \xed\x9f\xbf \xee\x80\x80 \xf4\x8f\xbf\xbf, and long enough";
  EXPECT_EQ(WellFormedUtf8(text), text);
  EXPECT_EQ(WellFormedUtf8(std::string("a\0b\0", 4)), std::string("a\0b\0", 4));
  EXPECT_EQ(WellFormedUtf8(""), "");
}

TEST(WellFormedUtf8Test, ReplacesEachByteThatBelongsToNoCharacter) {
  EXPECT_EQ(WellFormedUtf8("a\xff"
                           "b"),
            "a\xef\xbf\xbd"
            "b");
  EXPECT_EQ(WellFormedUtf8("\xc3"), "\xef\xbf\xbd");
  EXPECT_EQ(WellFormedUtf8(std::string("\0\x80", 2)), std::string("\0\xef\xbf\xbd", 4));
}

TEST(WellFormedUtf8Test, RefusesLongFormsSurrogatesAndWhatLiesAboveTheLastCharacter) {
  for (const char* text : {"\xc0\xaf", "\xe0\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80",
                           "\xf0\x80\x80\x80", "\xf5\x80\x80\x80", "\xe4\xb8", "\xf0\x9f\x98"}) {
    EXPECT_NE(WellFormedUtf8(text), text);
  }
}

TEST(HalfCharactersTest, GiveWayToTheReplacementCharacter) {
  EXPECT_EQ(WithoutHalfCharacters(R"("a\ud800b\udfffc\uD83D")"), R"("a\ufffdb\ufffdc\ufffd")");
  EXPECT_EQ(WithoutHalfCharacters(R"("\ud800\ud83d\ude00\ude00")"),
            R"("\ufffd\ud83d\ude00\ufffd")");
}

TEST(HalfCharactersTest, LeaveEverythingElseAlone) {
  for (const char* json : {R"("\ud83d\ude00")", R"({"a":"\\ud800","b":"\n\u0041"})", "", R"("\)",
                           R"("\u12)", R"("\uzzzz")"}) {
    EXPECT_EQ(WithoutHalfCharacters(json), json);
  }
  const std::string zero("\"\n\0\\ud800\xff\"", 11);
  EXPECT_EQ(WithoutHalfCharacters(zero), zero);
}

TEST(HalfCharactersTest, AreFoundInALongText) {
  std::string json;
  std::string whole;
  for (int i = 0; i < 200000; ++i) {
    json += R"(\\\ud800 \xff\ud83d\ude00)";
    whole += R"(\\\ufffd \xff\ud83d\ude00)";
  }
  EXPECT_EQ(WithoutHalfCharacters(json), whole);
}

TEST(ShortenedTest, CutsBetweenCharacters) {
  EXPECT_EQ(Shortened("four", 4), "four");
  EXPECT_EQ(Shortened("fours", 4), "four…");
  EXPECT_EQ(Shortened("fouü and more", 4), "fou…");
}

}  // namespace
}  // namespace orvane::base
