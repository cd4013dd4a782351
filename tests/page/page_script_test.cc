// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page_fixture.h"

namespace orvane::page {
namespace {

using testing::ElementsAre;
using PageScript = PageTest;

TEST_F(PageScript, GivesTheLastValueAsJson) {
  EXPECT_EQ(Run("({ sum: 1 + 2, list: [1, 'a', null] })"), R"({"sum":3,"list":[1,"a",null]})");
}

TEST_F(PageScript, GivesNothingForUndefined) { EXPECT_EQ(Run("undefined"), ""); }

TEST_F(PageScript, HasWindowAndSelf) {
  EXPECT_EQ(Run("window === globalThis && self === globalThis"), "true");
}

TEST_F(PageScript, KeepsItsGlobalsFromOtherPages) {
  const auto other = MakePage();
  Run("var mine = 1");
  EXPECT_EQ(Run(*other, "typeof mine"), "\"undefined\"");
}

TEST_F(PageScript, WritesEachConsoleLevel) {
  Run("console.debug('a'); console.log('b'); console.info('c'); console.warn('d'); "
      "console.error('e')");
  EXPECT_THAT(console_.lines, ElementsAre("debug: a", "log: b", "info: c", "warn: d", "error: e"));
}

TEST_F(PageScript, FormatsWhatTheConsoleGets) {
  Run("console.log('%s is %d years', 'x', 7, { a: [1, 'two'], b: { c: null } }, undefined)");
  EXPECT_THAT(console_.lines,
              ElementsAre("log: x is 7 years { a: [1, \"two\"], b: { c: null } } undefined"));
}

TEST_F(PageScript, PrintsCircularObjects) {
  Run("const a = { name: 'a' }; a.self = a; console.log(a)");
  EXPECT_THAT(console_.lines, ElementsAre("log: { name: \"a\", self: [Circular] }"));
}

TEST_F(PageScript, SurvivesThrowingToStringInConsole) {
  EXPECT_EQ(Run("console.log('%s', { toString() { throw 1; } }); 'done'"), "\"done\"");
}

TEST_F(PageScript, CallsFunctionsThatCxxDefines) {
  page().DefineFunction("testing.deep.add",
                        [](const std::string& arguments) { return "{\"got\":" + arguments + "}"; });
  EXPECT_EQ(Run("testing.deep.add(1, 'x')"), R"({"got":[1,"x"]})");
}

TEST_F(PageScript, CatchesWhatDefinedFunctionsThrow) {
  page().DefineFunction(
      "broken", [](const std::string&) -> std::string { throw std::runtime_error("no luck"); });
  EXPECT_EQ(Run("try { broken(); } catch (error) { error.message; }"), "\"no luck\"");
}

TEST_F(PageScript, CarriesTextsOfAnyKind) {
  page().DefineFunction("echo", [](const std::string& arguments) { return arguments; });
  EXPECT_EQ(Run("echo('\\u{1F600} \\u00e9')[0] === '\\u{1F600} \\u00e9'"), "true");
}

}  // namespace
}  // namespace orvane::page
