// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_object.h"

#include <string>

#include <gmock/gmock.h>

#include "base/json_writer.h"

namespace orvane::base {
namespace {

TEST(JsonObjectTest, ReadsMembersInPlace) {
  const auto object = JsonObject::Parse(
      R"( {"a":"x\n\u00e9\ud83d\ude00","b":-12, "c":[1,{"d":null}] ,"e":true,"f":1.5e3} )");
  ASSERT_TRUE(object);
  EXPECT_EQ(object->Text("a"), "x\né😀");
  EXPECT_EQ(object->Integer("b"), -12);
  EXPECT_EQ(object->Raw("c"), R"([1,{"d":null}])");
  EXPECT_TRUE(object->Flag("e"));
  EXPECT_EQ(object->Integer("f"), std::nullopt);
  EXPECT_EQ(object->Text("b"), std::nullopt);
  EXPECT_EQ(object->Raw("missing"), "");
}

TEST(JsonObjectTest, RefusesWhatIsNoWholeObject) {
  for (const char* text : {"",
                           "{",
                           "}",
                           "[]",
                           "1",
                           "{}x",
                           "{} {}",
                           "{\"a\"}",
                           "{\"a\":}",
                           "{\"a\":1,}",
                           "{a:1}",
                           "{\"a\":01}",
                           "{\"a\":1.}",
                           "{\"a\":-}",
                           "{\"a\":1e}",
                           "{\"a\":tru}",
                           "{\"a\":\"\n\"}",
                           "{\"a\":\"\\x\"}",
                           "{\"a\":\"\\u12\"}",
                           "{\"a\":\"}",
                           "{\"a\":[1,]}",
                           "{\"a\":\"\xff\"}",
                           "{\"a\":'x'}",
                           "{\"a\":+1}",
                           "{\"a\":NaN}"}) {
    EXPECT_FALSE(JsonObject::Parse(text)) << text;
  }
}

TEST(JsonObjectTest, BoundsTheDepth) {
  const auto nested = [](size_t depth) {
    return "{\"a\":" + std::string(depth, '[') + std::string(depth, ']') + "}";
  };
  EXPECT_TRUE(JsonObject::Parse(nested(60)));
  EXPECT_FALSE(JsonObject::Parse(nested(1000000)));
}

TEST(JsonObjectTest, ReplacesHalfACharacter) {
  EXPECT_EQ(DecodeJsonString(R"("\ud800x")"), "\xef\xbf\xbdx");
  EXPECT_EQ(DecodeJsonString(R"("\udc00")"), "\xef\xbf\xbd");
  EXPECT_EQ(DecodeJsonString(R"("\"\\\/\b\f\n\r\t")"), "\"\\/\b\f\n\r\t");
}

TEST(JsonElementsTest, GivesEachElementAsItIsWritten) {
  EXPECT_THAT(JsonElements(R"([1, "a,b" ,{"c":[2]}])").value(),
              testing::ElementsAre("1", R"("a,b")", R"({"c":[2]})"));
  EXPECT_THAT(JsonElements("[]").value(), testing::IsEmpty());
  EXPECT_FALSE(JsonElements("{}"));
  EXPECT_FALSE(JsonElements("[1"));
}

TEST(JsonWriterTest, WritesMembersInOrder) {
  EXPECT_EQ(JsonWriter().Text("a", "\"").Number("b", -1).Raw("c", "[]").Flag("d", false).Take(),
            R"({"a":"\"","b":-1,"c":[],"d":false})");
  EXPECT_EQ(JsonWriter().Take(), "{}");
}

}  // namespace
}  // namespace orvane::base
