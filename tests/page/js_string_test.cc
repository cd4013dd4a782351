// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/js_string.h"

#include <string>

#include <gtest/gtest.h>

namespace orvane::page {
namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

std::string RoundTrip(const std::string& text) { return JsString(text).ToUtf8(); }

std::string FromUnits(std::u16string_view units) {
  return JsString(JSStringCreateWithCharacters(reinterpret_cast<const JSChar*>(units.data()),
                                               units.size()))
      .ToUtf8();
}

TEST(JsStringTest, KeepsTextOfEveryLength) {
  for (const char* text : {"", "a", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"})
    EXPECT_EQ(RoundTrip(text), text);
}

TEST(JsStringTest, KeepsLongText) {
  const std::string text(3000000, 'x');
  EXPECT_EQ(RoundTrip(text), text);
}

TEST(JsStringTest, ReusesTheBuffer) {
  std::string buffer = "something longer than the new text";
  JsString(std::string("new")).CopyTo(&buffer);
  EXPECT_EQ(buffer, "new");
}

TEST(JsStringTest, ReplacesInvalidUtf8) {
  EXPECT_EQ(RoundTrip("a\xFFz"), std::string("a") + kReplacement + "z");
}

TEST(JsStringTest, ReplacesALoneSurrogate) {
  EXPECT_EQ(FromUnits(u"a\xD800z"), std::string("a") + kReplacement + "z");
  EXPECT_EQ(FromUnits(u"\xDC00"), kReplacement);
}

TEST(JsStringTest, KeepsPairsBesideALoneSurrogate) {
  EXPECT_EQ(FromUnits(u"\U0001F600\xD800"), std::string("\xF0\x9F\x98\x80") + kReplacement);
}

TEST(JsStringTest, ReplacesEachBadByte) {
  EXPECT_EQ(RoundTrip("\xFF\xFE"), std::string(kReplacement) + kReplacement);
}

TEST(JsStringTest, ReplacesSequencesThatAreCutShort) {
  EXPECT_EQ(RoundTrip("\xE2\x82"), std::string(kReplacement) + kReplacement);
}

TEST(JsStringTest, ReplacesOverlongFormsSurrogatesAndWhatIsBeyondUnicode) {
  for (const char* bytes :
       {"\xC0\x80", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
    EXPECT_EQ(RoundTrip(bytes).substr(0, 3), kReplacement);
  }
}

}  // namespace
}  // namespace orvane::page
