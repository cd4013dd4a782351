// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/shown_text.h"

#include <string>

#include <gtest/gtest.h>

namespace orvane::television {
namespace {

TEST(Quoted, CutsBetweenCharacters) {
  std::string text;
  for (int i = 0; i < 50; ++i) text += "é";
  text.insert(0, "x");
  const std::string quoted = Quoted(text);
  EXPECT_EQ(quoted.size(), 1 + 79 + std::string("…").size() + 1);
  EXPECT_EQ(quoted.substr(0, 2), "\"x");
}

TEST(Quoted, HidesControlCharacters) { EXPECT_EQ(Quoted("a\n\x1b\x7f"), "\"a???\""); }

TEST(ErrorText, LosesTheMiddleOfALongTextBetweenCharacters) {
  std::string text = "x";
  for (int i = 0; i < 2000; ++i) text += "é";
  text += " Remedy.";
  const std::string shown = ErrorText(text);
  EXPECT_EQ(shown.substr(0, 3), "xé");
  EXPECT_EQ(shown.substr(shown.size() - 8), " Remedy.");
  EXPECT_EQ(shown.size(), 699 + std::string(" … ").size() + 600);
  EXPECT_EQ(ErrorText("a short one\n"), "a short one?");
}

}  // namespace
}  // namespace orvane::television
