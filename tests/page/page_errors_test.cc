// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page_fixture.h"

namespace orvane::page {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class PageErrors : public PageTest {
 protected:
  ScriptError Thrown(const std::string& source) {
    return page().Evaluate(source, "app/main.js").value_or(ScriptError{});
  }

  // The one error that nothing caught while the loop ran.
  ScriptError Uncaught(const std::string& source) {
    EXPECT_EQ(page().Evaluate(source, "app/main.js"), std::nullopt);
    EXPECT_TRUE(page().RunUntilIdle(kLimit));
    const std::vector<ScriptError> errors = errors_.Take();
    EXPECT_EQ(errors.size(), 1u);
    return errors.empty() ? ScriptError{} : errors[0];
  }
};

TEST_F(PageErrors, NamesFileLineAndColumn) {
  const ScriptError error = Thrown("\n\n  throw new TypeError('no such thing');");
  EXPECT_EQ(Format(error), "app/main.js:3:22: TypeError: no such thing");
}

TEST_F(PageErrors, NamesTheInnermostFrame) {
  const ScriptError error = Thrown("function inner() {\n  null.x;\n}\ninner();");
  EXPECT_EQ(error.line, 2);
  EXPECT_THAT(error.stack, HasSubstr("inner@app/main.js:2"));
}

TEST_F(PageErrors, NamesThePlaceOfASyntaxError) {
  const ScriptError error = Thrown("let a = 1;\nlet b = ;\n");
  EXPECT_EQ(error.file, "app/main.js");
  EXPECT_EQ(error.line, 2);
  EXPECT_THAT(error.message, HasSubstr("SyntaxError"));
}

TEST_F(PageErrors, NamesTheFileForThrownValuesThatAreNoErrors) {
  EXPECT_EQ(Format(Thrown("throw 'a text'")), "app/main.js: a text");
  EXPECT_EQ(Thrown("throw { code: 5 }").message, "{\"code\":5}");
  EXPECT_EQ(Thrown("throw null").message, "null");
  EXPECT_EQ(Thrown("throw undefined").message, "undefined");
}

TEST_F(PageErrors, SurvivesThrownObjectsThatThrow) {
  EXPECT_EQ(Thrown("throw { toString() { throw 1; }, get stack() { throw 2; } }").message, "");
}

TEST_F(PageErrors, PlacesARuntimeExceptionAtThePagesCall) {
  const ScriptError error =
      Thrown("\n  xwalk.utils.checkPrivilegeAccess(xwalk.utils.privilege.TV_INPUT_DEVICE);");
  EXPECT_EQ(error.file, "app/main.js");
  EXPECT_EQ(error.line, 2);
  EXPECT_EQ(
      error.message,
      "SecurityError: Permission denied: add the line <tizen:privilege "
      "name=\"http://tizen.org/privilege/tv.inputdevice\"/> to the application's config.xml.");
}

TEST_F(PageErrors, PlacesAnExtensionsExceptionAtThePagesCall) {
  LoadExtension();
  const ScriptError error = Thrown("\n\n test.direct.fail();");
  EXPECT_EQ(Format(error), "app/main.js:3:18: NotFoundError: nothing there");
}

TEST_F(PageErrors, ReportsWhatATimerThrows) {
  EXPECT_EQ(Format(Uncaught("setTimeout(() => {\n  throw new RangeError('timer');\n})")),
            "app/main.js:2:23: RangeError: timer");
}

TEST_F(PageErrors, ReportsWhatAMicrotaskThrows) {
  EXPECT_EQ(Uncaught("queueMicrotask(() => { throw new Error('micro'); })").message,
            "Error: micro");
}

TEST_F(PageErrors, ReportsARejectionThatNothingHandles) {
  const ScriptError error = Uncaught("\nPromise.reject(new Error('lost'));");
  EXPECT_EQ(error.message, "Unhandled promise rejection: Error: lost");
  EXPECT_EQ(error.line, 2);
}

TEST_F(PageErrors, KeepsQuietAboutRejectionsThatAreHandled) {
  EXPECT_EQ(Run("Promise.reject(new Error('found')).catch(() => {}); (async () => { try { await "
                "Promise.reject(1); }"
                "catch (error) {} })(); 1"),
            "1");
  EXPECT_THAT(errors_.Take(), IsEmpty());
}

TEST_F(PageErrors, ReportsWhatAMessageListenerThrows) {
  LoadExtension();
  EXPECT_EQ(
      Uncaught("test.direct.extension.setMessageListener(() => { throw new Error('listener'); });"
               "test.direct.send('post:x');")
          .message,
      "Error: listener");
}

TEST_F(PageErrors, GoesOnAfterAnError) {
  Run("var ran = false; setTimeout(() => { throw 1; }); setTimeout(() => { ran = true; })");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_EQ(Run("ran"), "true");
}

TEST_F(PageErrors, AreDroppedWithoutASink) {
  options_.errors = nullptr;
  RunToEnd("var ran = 0; setTimeout(() => { ran = 1; throw new Error('lost'); })");
  EXPECT_EQ(Run("ran"), "1");
}

TEST_F(PageErrors, GivesTheErrorOfAResultThatIsNoJson) {
  EXPECT_THAT(Run("const a = {}; a.a = a; a"), HasSubstr("threw TypeError"));
}

}  // namespace
}  // namespace orvane::page
