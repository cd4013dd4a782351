// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <stdlib.h>

#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>

#include "common/extension.h"
#include "common/parsed_instance.h"
#include "fake_host.h"
#include "set_fixture.h"

namespace orvane::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class SilentException : public std::exception {
 public:
  const char* what() const noexcept override { return ""; }
};

class JsonInstance : public common::ParsedInstance {
 public:
  JsonInstance() : ParsedInstance("1.2") {
    RegisterSyncHandler("untouched", [](const picojson::value&, picojson::object&) {});
    RegisterSyncHandler("echo", [this](const picojson::value& args, picojson::object& out) {
      ReportSuccess(args, out);
    });
    RegisterSyncHandler("throw", [](const picojson::value& args, picojson::object& out) {
      out["result"] = args;
      throw std::runtime_error("the handler's own text");
    });
    RegisterSyncHandler("throwNumber", [](const picojson::value&, picojson::object&) { throw 42; });
    RegisterSyncHandler("throwSilently",
                        [](const picojson::value&, picojson::object&) { throw SilentException(); });
    RegisterSyncHandler("throwPlatform", [](const picojson::value&, picojson::object&) {
      throw common::TypeMismatchException("from deep below");
    });
    RegisterSyncHandler("empty", nullptr);
    RegisterSyncHandler("nest", [this](const picojson::value& args, picojson::object& out) {
      for (int i = 0; i < 100; ++i) {
        HandleMessage((R"({"cmd":"echo","args":{"i":)" + std::to_string(i) + "}}").c_str());
      }
      ReportSuccess(args, out);
    });
    RegisterSyncHandler("echo", [](const picojson::value&, picojson::object&) {});
  }
};

int32_t Initialize(XW_Extension /*extension*/, XW_GetInterface /*lookup*/) { return XW_OK; }
void OnCreated(XW_Instance handle) {
  common::Extension::OnInstanceCreated(handle, new JsonInstance);
}
int32_t EntryPoint(XW_Extension extension, XW_GetInterface lookup) {
  return common::Extension::XW_Initialize(extension, lookup, Initialize, OnCreated, nullptr);
}

class MessageTest : public SetFixture {
 protected:
  MessageTest() {
    host_.Initialize(EntryPoint);
    instance_ = host_.Create();
  }
  ~MessageTest() override { host_.Destroy(instance_); }

  std::string Send(const std::string& message) { return host_.SendSync(instance_, message); }

  // The reply is an error with this code and name; returns its message.
  std::string ExpectError(const std::string& message, int code, const std::string& name) {
    const std::string reply = Send(message);
    picojson::value value;
    EXPECT_EQ(picojson::parse(value, reply), "") << reply;
    EXPECT_EQ(value.get("status").to_str(), "error") << message << " -> " << reply;
    const picojson::value& error = value.get("error");
    if (!error.is<picojson::object>()) {
      return {};
    }
    EXPECT_EQ(error.get("code").to_str(), std::to_string(code)) << reply;
    EXPECT_EQ(error.get("name").to_str(), name) << reply;
    return error.get("message").to_str();
  }
  std::string ExpectUnknownError(const std::string& message) {
    return ExpectError(message, 9999, "UnknownError");
  }

  FakeHost host_;
  XW_Instance instance_ = 0;
};

TEST_F(MessageTest, AnswersWithWhatTheHandlerReports) {
  EXPECT_EQ(Send(R"({"cmd":"echo","args":{"appid":"","n":-0.5}})"),
            R"({"result":{"appid":"","n":-0.5},"status":"success"})");
}

TEST_F(MessageTest, AnswersAnUntouchedReplyAsAnEmptyObject) {
  EXPECT_EQ(Send(R"({"cmd":"untouched","args":{}})"), "{}");
}

TEST_F(MessageTest, AnswersTheSameMessageAgainAndAgain) {
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 20; ++i) {
      const std::string number = std::to_string(i);
      EXPECT_EQ(Send(R"({"cmd":"echo","args":{"i":)" + number + "}}"),
                R"({"result":{"i":)" + number + R"(},"status":"success"})");
    }
    EXPECT_THAT(Send(R"({"cmd":"throw","args":{"i":1}})"), HasSubstr("the handler's own text"));
  }
}

TEST_F(MessageTest, LeavesAHandlerItsArgumentsWhileOtherMessagesCome) {
  const std::string message = R"({"cmd":"nest","args":{"a":"as it was"}})";
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Send(message), R"({"result":{"a":"as it was"},"status":"success"})");
  }
}

TEST_F(MessageTest, AnswersALongMessage) {
  const std::string text(100000, 'x');
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Send(R"({"cmd":"echo","args":{"a":")" + text + "\"}}"),
              R"({"result":{"a":")" + text + R"("},"status":"success"})");
  }
}

TEST_F(MessageTest, TakesMissingArgumentsAsNone) {
  EXPECT_EQ(Send(R"({"cmd":"echo"})"), R"({"result":{},"status":"success"})");
}

TEST_F(MessageTest, TakesWhiteSpaceAroundTheMessage) {
  EXPECT_EQ(Send(" \t\r\n{ \"cmd\" : \"untouched\" } \t\r\n"), "{}");
}

TEST_F(MessageTest, KeepsTheFirstOfTwoHandlersWithOneName) {
  EXPECT_THAT(Send(R"({"cmd":"echo","args":{}})"), HasSubstr("result"));
}

TEST_F(MessageTest, PostsTheReplyToAMessageThatNobodyWaitsFor) {
  host_.Send(instance_, R"({"cmd":"echo","args":{"callbackId":7}})");
  EXPECT_EQ(host_.AwaitPost(instance_), R"({"result":{"callbackId":7},"status":"success"})");
}

TEST_F(MessageTest, CarriesNumbersUnchanged) {
  for (const char* number :
       {"0", "-1", "0.5", "-2147483649", "9007199254740992", "1e+300", "5e-324", "4294967296.5"}) {
    picojson::value reply;
    picojson::parse(reply, Send(std::string(R"({"cmd":"echo","args":{"n":)") + number + "}}"));
    EXPECT_EQ(reply.get("result").get("n").get<double>(), strtod(number, nullptr)) << number;
  }
}

TEST_F(MessageTest, CarriesTextUnchanged) {
  const std::string text = R"("quote \" back \\ line \n nul \u0000 é 😀")";
  picojson::value expected;
  picojson::parse(expected, text);

  picojson::value reply;
  picojson::parse(reply, Send(R"({"cmd":"echo","args":{"t":)" + text + "}}"));

  EXPECT_EQ(reply.get("result").get("t").get<std::string>(), expected.get<std::string>());
}

TEST_F(MessageTest, NamesAnUnknownCommand) {
  EXPECT_EQ(ExpectError(R"({"cmd":"OrvaneManager_fly","args":{}})", 9, "NotSupportedError"),
            "Unknown command: OrvaneManager_fly");
  EXPECT_EQ(ExpectError(R"({"cmd":"","args":{}})", 9, "NotSupportedError"), "Unknown command: ");
}

TEST_F(MessageTest, RefusesTextThatIsNoJson) {
  for (const char* message :
       {"", " ", "\xff", "{", "}", "cmd", "{\"cmd\":\"echo\"", "{\"cmd\":\"echo\",}",
        "{'cmd':'echo'}", "{\"cmd\":echo}", "{\"cmd\":\"echo\",\"args\":{\"n\":01x}}",
        "{\"cmd\":\"ec", "{\"cmd\":\"\\u12\"}", "{\"cmd\":\"\\ud800\"}", "{cmd:\"echo\"}",
        "{\"cmd\":\"echo\",\"args\":{\"n\":-}}", "{\"cmd\":\"echo\",\"args\":{\"n\":NaN}}",
        "{\"cmd\":\"echo\",\"args\":{\"n\":Infinity}}"}) {
    EXPECT_THAT(ExpectUnknownError(message), StartsWith("The message is no JSON")) << message;
  }
}

TEST_F(MessageTest, RefusesJsonThatIsNoObject) {
  for (const char* message : {"null", "true", "12", "\"echo\"", "[]", R"([{"cmd":"echo"}])"}) {
    EXPECT_EQ(ExpectUnknownError(message), "The message is no JSON object") << message;
  }
}

TEST_F(MessageTest, RefusesNumbersBeyondADoublesRange) {
  for (const char* number : {"1e999", "-1e999", "1e309"}) {
    EXPECT_THAT(
        ExpectUnknownError(std::string(R"({"cmd":"echo","args":{"callbackId":)") + number + "}}"),
        StartsWith("The message holds a value out of range"))
        << number;
  }
}

TEST_F(MessageTest, RefusesTextBehindTheObject) {
  EXPECT_EQ(ExpectUnknownError(R"({"cmd":"echo"} and more)"),
            "The message has text behind its JSON: and more");
  EXPECT_THAT(ExpectUnknownError(R"({"cmd":"echo"}{"cmd":"echo"})"), HasSubstr("text behind"));
  EXPECT_THAT(ExpectUnknownError(R"({"cmd":"echo"},)"), HasSubstr("text behind"));
}

TEST_F(MessageTest, RefusesAMessageWithoutACommand) {
  for (const char* message :
       {"{}", R"({"args":{}})", R"({"cmd":null})", R"({"cmd":1})", R"({"cmd":["echo"]})",
        R"({"cmd":{"cmd":"echo"}})", R"({"Cmd":"echo"})"}) {
    EXPECT_EQ(ExpectUnknownError(message), R"(The message has no string member "cmd")") << message;
  }
}

TEST_F(MessageTest, RefusesArgumentsThatAreNoObject) {
  for (const char* args : {"null", "false", "0", R"("text")", "[]"}) {
    EXPECT_EQ(ExpectUnknownError(std::string(R"({"cmd":"echo","args":)") + args + "}"),
              R"(The message's "args" is no JSON object)")
        << args;
  }
}

std::string Nested(const std::string& open, const std::string& close, int depth) {
  std::string text = R"({"cmd":"untouched","args":{"n":)";
  for (int i = 0; i < depth; ++i) {
    text += open;
  }
  text += "0";
  for (int i = 0; i < depth; ++i) {
    text += close;
  }
  return text + "}}";
}

TEST_F(MessageTest, TakesDeepNesting) {
  EXPECT_EQ(Send(Nested("[", "]", 90)), "{}");
  EXPECT_EQ(Send(Nested(R"({"n":)", "}", 90)), "{}");
}

TEST_F(MessageTest, RefusesNestingThatCouldEndTheStack) {
  for (const int depth : {101, 1000000}) {
    EXPECT_EQ(ExpectUnknownError(Nested("[", "]", depth)), "The message is nested too deeply");
    EXPECT_EQ(ExpectUnknownError(Nested(R"({"n":)", "}", depth)),
              "The message is nested too deeply");
  }
  EXPECT_EQ(ExpectUnknownError(std::string(1000000, '[')), "The message is nested too deeply");
}

TEST_F(MessageTest, CountsNoBracketsInTexts) {
  const std::string brackets(1000, '{');
  EXPECT_EQ(Send(R"({"cmd":"untouched","args":{"n":"\")" + brackets + R"(\\"}})"), "{}");
}

TEST_F(MessageTest, TakesAHugeText) {
  const std::string text(4 << 20, 'x');
  EXPECT_EQ(Send(R"({"cmd":"echo","args":{"t":")" + text + R"("}})"),
            R"({"result":{"t":")" + text + R"("},"status":"success"})");
}

TEST_F(MessageTest, TurnsAHandlersExceptionIntoAnErrorWithItsText) {
  EXPECT_EQ(Send(R"({"cmd":"throw","args":{"n":1}})"),
            R"({"error":{"code":9999,"message":"the handler's own text","name":"UnknownError"},)"
            R"("status":"error"})");
  EXPECT_EQ(ExpectUnknownError(R"({"cmd":"throwPlatform"})"), "from deep below");
  EXPECT_EQ(ExpectUnknownError(R"({"cmd":"throwNumber"})"), "An exception of unknown type");
  EXPECT_EQ(ExpectUnknownError(R"({"cmd":"throwSilently"})"), "An exception without a text");
  EXPECT_EQ(ExpectUnknownError(R"({"cmd":"empty"})"), "bad_function_call");
}

TEST_F(MessageTest, LogsAHandlersException) {
  ClearLog();
  Send(R"({"cmd":"throw"})");
  ASSERT_EQ(set().log().lines().size(), 1U);
  EXPECT_EQ(set().log().lines()[0].tag, "WEBAPI_PLUGINS");
  EXPECT_EQ(set().log().lines()[0].priority, DLOG_ERROR);
  EXPECT_THAT(set().log().lines()[0].text, HasSubstr("the handler's own text"));
}

TEST_F(MessageTest, GoesOnAfterEveryRefusal) {
  Send("");
  Send(R"({"cmd":"throw"})");
  EXPECT_EQ(Send(R"({"cmd":"untouched"})"), "{}");
}

TEST(ParsedInstance, KeepsItsVersion) { EXPECT_EQ(JsonInstance().version(), "1.2"); }

}  // namespace
}  // namespace orvane::test
