// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "command.h"

namespace orvane::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

using ExecTest = CommandTest;

TEST_F(ExecTest, PrintsTheConsoleOnTheRightStream) {
  Write("a.js",
        "console.log('log', 1); console.info('info'); console.warn('w'); console.error('e')");

  const Outcome outcome = Run({"exec", "a.js"});

  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.out, "log 1\ninfo\n");
  EXPECT_EQ(outcome.err, "w\ne\n");
}

TEST_F(ExecTest, RunsScriptsInOrderInOnePage) {
  Write("a.js", "var greeting = 'hello';");
  Write("b.js", "console.log(greeting);");
  EXPECT_EQ(Run({"exec", "a.js", "b.js"}).out, "hello\n");
}

TEST_F(ExecTest, ReadsTheStandardInput) {
  Write("a.js", "var first = 1;");
  EXPECT_EQ(Run({"exec", "a.js", "-"}, "console.log(first + 1)").out, "2\n");
}

TEST_F(ExecTest, NamesTheStandardInputInErrors) {
  EXPECT_THAT(Run({"exec", "-"}, "\n\nnope();").err, StartsWith("<stdin>:3:5: ReferenceError"));
}

TEST_F(ExecTest, WaitsForTimersAndPromises) {
  Write("a.js", "setTimeout(() => Promise.resolve('late').then((text) => console.log(text)), 30);");
  EXPECT_EQ(Run({"exec", "a.js"}).out, "late\n");
}

TEST_F(ExecTest, EndsWithOneAndThePlaceOfAnUncaughtException) {
  Write("a.js", "console.log('before');\n\nthrow new RangeError('too far');\n");
  Write("b.js", "console.log('not run');");

  const Outcome outcome = Run({"exec", "a.js", "b.js"});

  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(outcome.out, "before\n");
  EXPECT_THAT(outcome.err, StartsWith("a.js:3:21: RangeError: too far\n"));
}

TEST_F(ExecTest, NamesThePlaceOfThePagesOwnCallWhenALibraryMethodThrows) {
  Write("a.js", "function press() {\n  dravelt.orvane.generateKey('Nope');\n}\npress();\n");

  const Outcome outcome = Run({"exec", "a.js"});

  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, StartsWith("a.js:2:29: InvalidValuesError: "));
  EXPECT_THAT(outcome.err, HasSubstr("global code@a.js:4"));
}

TEST_F(ExecTest, EndsWithOneForASyntaxError) {
  Write("a.js", "\nlet a = ;\n");
  const Outcome outcome = Run({"exec", "a.js"});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, StartsWith("a.js:2: SyntaxError: "));
}

TEST_F(ExecTest, EndsWithOneForAnExceptionInATimerAndRunsTheOthers) {
  Write("a.js",
        "setTimeout(() => {\n  throw new Error('late');\n}, 1);\n"
        "setTimeout(() => console.log('other'), 20);\n");

  const Outcome outcome = Run({"exec", "a.js"});

  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(outcome.out, "other\n");
  EXPECT_THAT(outcome.err, StartsWith("a.js:2:18: Error: late"));
}

TEST_F(ExecTest, EndsWithOneForAPromiseThatNobodyCatches) {
  Write("a.js", "Promise.reject(new Error('lost'));");
  const Outcome outcome = Run({"exec", "a.js"});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, HasSubstr("lost"));
}

TEST_F(ExecTest, EndsAPageThatIsNeverIdle) {
  Write("a.js", "setInterval(() => {}, 10);");
  const Outcome outcome = Run({"exec", "--timeout", "0.2", "a.js"});
  EXPECT_EQ(outcome.exit_code, 3);
  EXPECT_THAT(outcome.err, HasSubstr("after 0.2 s the page still waits"));
}

TEST_F(ExecTest, EndsAScriptThatNeverReturns) {
  Write("a.js", "console.log('begun'); for (;;) {}");
  const Outcome outcome = Run({"exec", "--timeout", "0.2", "a.js"});
  EXPECT_EQ(outcome.exit_code, 3);
  EXPECT_EQ(outcome.out, "begun\n");
  EXPECT_THAT(outcome.err, HasSubstr("still running after 0.2 s"));
}

TEST_F(ExecTest, RunsNothingWhenOneScriptIsMissing) {
  Write("a.js", "console.log('run');");
  const Outcome outcome = Run({"exec", "a.js", "missing.js"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("missing.js: there is no such script"));
}

TEST_F(ExecTest, RefusesAFolderAsScript) {
  Write("folder/a.js", "");
  const Outcome outcome = Run({"exec", "folder"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("folder is a folder"));
}

TEST_F(ExecTest, RefusesATimeLimitThatIsNone) {
  for (const char* seconds : {"0", "-1", "soon", "1e99"}) {
    const Outcome outcome = Run({"exec", "--timeout", seconds, "-"});
    EXPECT_EQ(outcome.exit_code, 2) << seconds;
    EXPECT_THAT(outcome.err, HasSubstr("--timeout")) << seconds;
  }
}

TEST_F(ExecTest, LoadsAFurtherExtension) {
  Write("a.js", "console.log(example.echo.say('hi'), typeof dravelt.orvane.getVersion);");
  const Outcome outcome = Run({"exec", "--extension", ECHO_EXTENSION, "a.js"});
  EXPECT_EQ(outcome.out, "echo of hi function\n") << outcome.err;
}

TEST_F(ExecTest, LoadsAFolderOfExtensions) {
  Write("a.js", "console.log(example.echo.say('hi'));");
  const std::string extensions = std::filesystem::path(ECHO_EXTENSION).parent_path();
  EXPECT_EQ(Run({"exec", "--extension", extensions, "a.js"}).out, "echo of hi\n");
}

TEST_F(ExecTest, TakesAnotherBuildOfTheLibraryInPlaceOfItsOwn) {
  std::filesystem::copy(ORVANE_EXTENSION, folder() / "other.so");
  Write("a.js", "console.log(dravelt.orvane.getVersion());");
  const std::string libraries = std::filesystem::path(ORVANE_EXTENSION).parent_path();
  const Outcome outcome =
      Run({"exec", "--extension", "other.so", "a.js"}, "", {"LD_LIBRARY_PATH=" + libraries});
  EXPECT_THAT(outcome.out, HasSubstr("3.9\n"));
  EXPECT_THAT(outcome.err, IsEmpty());
}

TEST_F(ExecTest, RefusesAnExtensionThatIsNone) {
  Write("bad.so", "not a library");
  for (const char* path : {"bad.so", "missing.so"}) {
    const Outcome outcome = Run({"exec", "--extension", path, "-"}, "console.log('run')");
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr(std::string("--extension ") + path));
  }
}

TEST_F(ExecTest, DoesNotWaitForEverForAnExtensionToClose) {
  Write("a.js", "console.log(example.stuck.here);");
  const Outcome outcome = Run({"exec", "--closing", "0.2", "--extension", STUCK_EXTENSION, "a.js"});
  EXPECT_EQ(outcome.exit_code, 3);
  EXPECT_EQ(outcome.out, "true\n");
  EXPECT_THAT(outcome.err, HasSubstr("did not finish its work"));
}

TEST_F(ExecTest, SurvivesHugeMessages) {
  Write("a.js",
        "try { dravelt.orvane.setIMERecommendedWords(['x'.repeat(5000000)]); }\n"
        "catch (error) { console.log(error.name); }");
  const Outcome outcome = Run({"exec", "a.js"});
  EXPECT_EQ(outcome.out, "UnknownError\n");
  EXPECT_THAT(outcome.err, HasSubstr("longer than 65536 bytes"));
  EXPECT_THAT(outcome.err, Not(HasSubstr("xxxx")));
}

}  // namespace
}  // namespace orvane::cli
