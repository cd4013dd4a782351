// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_fields.h"

#include <gmock/gmock.h>

namespace orvane::base {
namespace {

enum class Mode { kOnce, kAlways };
constexpr EnumName<Mode> kModeNames[] = {{Mode::kOnce, "once"}, {Mode::kAlways, "always"}};
constexpr auto& EnumNames(Mode) { return kModeNames; }

struct Inner {
  int x = 0;
};
template <class Map>
void MapFields(Map& map, Inner& inner) {
  map("x", inner.x, Range{-5, 5});
}

struct Outer {
  std::string name;
  bool flag = false;
  uint64_t count = 7;
  double share = 0;
  Mode mode = Mode::kAlways;
  std::vector<Inner> inners;
  std::optional<int> maybe;
  Json any;
};
template <class Map>
void MapFields(Map& map, Outer& outer) {
  map("name", outer.name);
  map.Optional("flag", outer.flag);
  map.Optional("count", outer.count);
  map.Optional("share", outer.share);
  map.Optional("mode", outer.mode);
  map.Optional("inners", outer.inners);
  map.Optional("maybe", outer.maybe);
  map.Optional("any", outer.any);
}

std::string ErrorOf(const char* text, Unknown unknown = Unknown::kPass) {
  try {
    FromJson<Outer>(ParseJson(text), "the test", unknown);
  } catch (const JsonError& error) {
    return error.what();
  }
  return "";
}

TEST(JsonFieldsTest, RefusesADoubleBeyondTheFieldsType) {
  for (const char* maybe : {"3e9", "-3e9", "1e15", "3000000000"}) {
    EXPECT_THAT(ErrorOf((R"({"name":"","maybe":)" + std::string(maybe) + "}").c_str()),
                ::testing::HasSubstr("a whole number from -2147483648 to 2147483647"))
        << maybe;
  }
}

TEST(JsonFieldsTest, ReadsWhatItWrites) {
  const Json json = ParseJson(R"({"name":"n","flag":true,"count":18446744073709551615,"share":0.5,
    "mode":"once","inners":[{"x":-5},{"x":5}],"maybe":3,"any":{"a":[1]}})");
  const Outer outer = FromJson<Outer>(json, "the test");
  EXPECT_EQ(outer.count, UINT64_MAX);
  EXPECT_EQ(outer.mode, Mode::kOnce);
  EXPECT_EQ(outer.inners.at(1).x, 5);
  EXPECT_EQ(outer.maybe, 3);
  EXPECT_EQ(ToJson(outer), json);
}

TEST(JsonFieldsTest, LeavesOutWhatMayBeLeftOut) {
  const Outer outer = FromJson<Outer>(ParseJson(R"({"name":"","flag":null,"other":1})"), "it");
  EXPECT_FALSE(outer.flag);
  EXPECT_EQ(outer.count, 7U);
  EXPECT_EQ(ToJson(outer).count("maybe"), 0U);
}

TEST(JsonFieldsTest, SaysWhatIsWantedAndWhatIsGiven) {
  EXPECT_EQ(ErrorOf("[]"), "the test has to be a JSON object, in braces, but is [].");
  EXPECT_EQ(ErrorOf("{}"), "\"name\" of the test has to be a string, but is not given.");
  EXPECT_EQ(ErrorOf(R"({"name":1})"), "\"name\" of the test has to be a string, but is 1.");
  EXPECT_EQ(ErrorOf(R"({"name":"","flag":0})"),
            "\"flag\" of the test has to be true or false, but is 0.");
  EXPECT_EQ(ErrorOf(R"({"name":"","mode":"never"})"),
            "\"mode\" of the test has to be \"once\" or \"always\", but is \"never\".");
  EXPECT_EQ(ErrorOf(R"({"name":"","inners":[{"x":6}]})"),
            "\"x\" of an entry of \"inners\" of the test has to be a whole number from -5 to 5, "
            "but is 6.");
}

TEST(JsonFieldsTest, TakesWholeNumbersAlone) {
  EXPECT_EQ(FromJson<Inner>(ParseJson(R"({"x":2.0})"), "it").x, 2);
  EXPECT_EQ(FromJson<Outer>(ParseJson(R"({"name":"","count":2e3})"), "it").count, 2000U);
  for (const char* count : {"-1", "1.5", "1e300", "-1e300", "1e19", "true", "\"1\""}) {
    EXPECT_NE(ErrorOf((R"({"name":"","count":)" + std::string(count) + "}").c_str()), "");
  }
  for (const char* maybe : {"2147483648", "-2147483649", "9223372036854775808"}) {
    EXPECT_NE(ErrorOf((R"({"name":"","maybe":)" + std::string(maybe) + "}").c_str()), "");
  }
}

TEST(JsonFieldsTest, RefusesFieldsThatNobodyKnowsWhereAsked) {
  EXPECT_EQ(ErrorOf(R"({"name":"","flga":true})"), "");
  EXPECT_THAT(ErrorOf(R"({"name":"","flga":true})", Unknown::kRefuse),
              ::testing::AllOf(::testing::HasSubstr("no \"flga\" among the test"),
                               ::testing::HasSubstr("Did you mean \"flag\"?")));
}

}  // namespace
}  // namespace orvane::base
