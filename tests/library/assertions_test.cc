// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <signal.h>
#include <stdio.h>

#include "common/extension.h"
#include "library_fixture.h"
#include "orvane/orvane_instance.h"

#ifdef ORVANE_COVERAGE
extern "C" void __gcov_dump();
#endif

namespace orvane::test {
namespace {

// In the process that dies: the log goes to the standard error output, where the test sees it.
class LogToStandardError : public tvset::Observer {
 public:
  LogToStandardError() {
    tvset::Set::Instance().events().Add(this);
#ifdef ORVANE_COVERAGE
    signal(SIGABRT, [](int) { __gcov_dump(); });
#endif
  }

  void OnLogLine(const tvset::LogLine& line) override {
    fprintf(stderr, "%d/%s: %s\n", line.priority, line.tag.c_str(), line.text.c_str());
  }
};

// The log line, and after it the C library's message.
std::string Then(const char* log_line, const char* message) {
  return std::string(log_line) + ".*" + message;
}

// `statement` ends the process so.
#define EXPECT_ASSERTION(statement, log_line, message) \
  EXPECT_EXIT(                                         \
      {                                                \
        LogToStandardError log;                        \
        statement;                                     \
      },                                               \
      ::testing::KilledBySignal(SIGABRT), Then(log_line, message))

constexpr char kArray[] = "[]";

class LogLinesOfAssertions : public SetFixture {};

TEST_F(LogLinesOfAssertions, NoCurrentExtension) {
  EXPECT_ASSERTION(
      common::GetCurrentExtension(),
      "6/WEBAPI_PLUGINS: XW_Extension.cc: GetCurrentExtension\\(21\\) > assert\\(g_extension\\)\n",
      "!!.g_extension. && ");
}

class AssertionsTest : public LibraryFixture {
 protected:
  extension::orvane::OrvaneInstance& page() {
    return *static_cast<extension::orvane::OrvaneInstance*>(
        static_cast<common::Instance*>(host_.data(instance_)));
  }
  static picojson::value Json(const char* text) {
    picojson::value value;
    picojson::parse(value, text);
    return value;
  }

  picojson::object out_;
};

constexpr char kNoObject[] =
    "6/WEBAPI_PLUGINS: picojson.h: contains\\([0-9]+\\) > assert\\(is<object>\\(\\)\\)\n";
constexpr char kNoText[] =
    "6/WEBAPI_PLUGINS: picojson.h: get.*\\([0-9]+\\) > assert\\(.*is<std::string>\\(\\)\\)\n";
constexpr char kNoNumber[] =
    "6/WEBAPI_PLUGINS: picojson.h: get.*\\([0-9]+\\) > assert\\(.*is<double>\\(\\)\\)\n";

TEST_F(AssertionsTest, ArgumentsThatAreNoObjectEndTheProcess) {
  EXPECT_ASSERTION(page().generateKey(Json(kArray), out_), kNoObject, "!!.is<object>");
  EXPECT_ASSERTION(page().setScreenSaver(Json("null"), out_), kNoObject, "!!.is<object>");
}

TEST_F(AssertionsTest, AKeyCodeThatIsNoNumberEndsTheProcess) {
  EXPECT_ASSERTION(Call("generateKey", R"({"xKeyCode":"76"})"), kNoNumber, "is<double>");
}

TEST_F(AssertionsTest, AnApplicationIdThatIsNoTextEndsTheProcess) {
  EXPECT_ASSERTION(Call("getAppState", "{}"), kNoText, "is<std::string>");
  EXPECT_ASSERTION(Call("getAppState", R"({"appid":null})"), kNoText, "is<std::string>");
}

TEST_F(AssertionsTest, AContextTaskWithoutNumbersEndsTheProcess) {
  EXPECT_ASSERTION(Call("requestTvContextTask", R"({"target":0})"), kNoNumber, "is<double>");
  EXPECT_ASSERTION(Call("requestTvContextTask", R"({"target":"0","action":0})"), kNoNumber,
                   "is<double>");
}

TEST_F(AssertionsTest, AResourceThatIsNoTextEndsTheProcess) {
  EXPECT_ASSERTION(Call("getSystemStat", R"({"callbackId":1})"), kNoText, "is<std::string>");
}

TEST_F(AssertionsTest, TaskArgumentsOfAnotherTypeEndTheProcess) {
  EXPECT_ASSERTION(Call("setScreenSaver", R"({"callbackId":"1","state":0})"), kNoNumber,
                   "is<double>");
  EXPECT_ASSERTION(Call("setScreenSaver", R"({"callbackId":1,"state":true})"), kNoNumber,
                   "is<double>");
  EXPECT_ASSERTION(Call("recordProfiling", R"({"callbackId":1,"label":5})"), kNoText,
                   "is<std::string>");
}

}  // namespace
}  // namespace orvane::test
