// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "orvane/orvane_api.h"

namespace {

std::string ReadBuiltScript() {
  std::ifstream file(ORVANE_SCRIPT_TEXT, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST(ScriptText, IsTheBuiltScriptByteForByte) {
  const std::string built = ReadBuiltScript();

  ASSERT_FALSE(built.empty());
  EXPECT_EQ(built, kSource_orvane_api);
}

TEST(ScriptText, IsOneLine) { EXPECT_EQ(nullptr, std::strpbrk(kSource_orvane_api, "\r\n")); }

TEST(ScriptText, BeginsWithTheNativeManagerAndEndsWithTheExport) {
  const std::string text = kSource_orvane_api;
  const std::string end = "exports=new OrvaneManager;";

  EXPECT_EQ(0U, text.rfind("var native=new xwalk.utils.NativeManager(extension);", 0));
  ASSERT_GT(text.size(), end.size());
  EXPECT_EQ(end, text.substr(text.size() - end.size()));
}

}  // namespace
