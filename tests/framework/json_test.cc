// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <picojson.h>

#include "json_writer.h"
#include "plain_json_reader.h"

namespace common {
namespace {

std::string Nested(int levels) { return std::string(levels, '[') + std::string(levels, ']'); }

TEST(PlainJsonTest, ReadsWhatTheLibraryReads) {
  for (const std::string& text :
       {std::string(R"({"cmd":"x","args":{"a":"","b":[1,-2,{"c":null}],"d":true,"e":false}})"),
        std::string(" {\t\"a\" :\r\n[ ] , \"a\" : 0 } "), std::string("{}"), std::string("[]"),
        std::string("\"\x7f\xff and \xc3\xa9\""), std::string("999999999999999"),
        std::string(R"({"":{"":""}})"), Nested(kMaxJsonDepth)}) {
    picojson::value plain;
    EXPECT_TRUE(ReadPlainJson(text.c_str(), plain)) << text;
    picojson::value whole;
    EXPECT_EQ(picojson::parse(whole, text), "");
    EXPECT_EQ(plain, whole) << text;
  }
}

TEST(PlainJsonTest, LeavesWhatIsUnusualToTheLibrary) {
  for (const std::string& text :
       {std::string("-0"), std::string("01"), std::string("1.5"), std::string("1e3"),
        std::string("1234567890123456"), std::string("-"), std::string(R"("\u0041")"),
        std::string("\"a\tb\""), std::string("\"open"), std::string("{\"a\"}"), std::string("[1,]"),
        std::string("{,}"), std::string("nul"), std::string("{} x"), std::string(""),
        std::string("[1 2]"), Nested(kMaxJsonDepth + 1)}) {
    picojson::value value;
    EXPECT_FALSE(ReadPlainJson(text.c_str(), value)) << text;
  }
}

TEST(JsonWriterTest, WritesWhatTheLibraryWrites) {
  for (const char* text :
       {"{}", R"({"status":"success"})", R"({"a":{"b":{}},"c":[1,"x"],"d":0.5,"e":null})",
        R"({"a/b":"\"quoted\" \\ \n \u0001 \u007f é"})"}) {
    picojson::value value;
    ASSERT_EQ(picojson::parse(value, std::string(text)), "");
    EXPECT_EQ(WriteJson(value.get<picojson::object>()), value.serialize());
  }
}

}  // namespace
}  // namespace common
