// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using picojson::array;
using picojson::object;
using picojson::value;
using testing::HasSubstr;

class MessagesTest : public SetProcessTest {
 protected:
  MessagesTest() { Start(); }
};

TEST_F(MessagesTest, AnswersASynchronousMessageWithItsTime) {
  const value answer = Sync(7, R"({"cmd":"OrvaneManager_getVersion","args":{}})");
  EXPECT_EQ(Json(answer.get("result").to_str()).get("result").to_str(), "3.9");
  EXPECT_GE(answer.get("us").get<double>(), 0);
}

TEST_F(MessagesTest, TellsEachMessageBeforeItIsHandled) {
  Sync(7, "hello", kTester);
  const value handling = WaitForHandling();
  EXPECT_EQ(handling.get("what").to_str(), "sync");
  EXPECT_EQ(handling.get("context").get<double>(), 7);
  EXPECT_EQ(handling.get("name").to_str(), kTester);
  EXPECT_EQ(handling.get("text").to_str(), "hello");
}

TEST_F(MessagesTest, TellsTheBeginningOfALongMessageOnly) {
  Sync(7, std::string(100000, 'x'), kTester);
  EXPECT_EQ(WaitForHandling().get("text").to_str(), std::string(4096, 'x'));
}

TEST_F(MessagesTest, PostsWhatTheExtensionAnswersLater) {
  Sync(7, R"({"cmd":"OrvaneManager_recordProfiling","args":{"label":"x","callbackId":5}})");
  const value posted = WaitForOp("posted");
  EXPECT_EQ(posted.get("context").get<double>(), 7);
  EXPECT_EQ(posted.get("extension").to_str(), kOrvane);
  EXPECT_EQ(Json(posted.get("text").to_str()).get("callbackId").get<double>(), 5);
}

TEST_F(MessagesTest, KeepsTheOrderOfPostedMessages) {
  Sync(7, "post:1000", kTester);
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(WaitForOp("posted").get("text").to_str(), std::to_string(i));
  }
}

TEST_F(MessagesTest, HandsPostedMessagesOnWithoutAnAnswer) {
  Post(7, "hello", kTester);
  EXPECT_EQ(WaitForOp("posted").get("text").to_str(), "got hello");
}

TEST_F(MessagesTest, KeepsContextsApart) {
  Post(7, "a", kTester);
  Post(8, "b", kTester);
  EXPECT_EQ(WaitForOp("posted").get("context").get<double>(), 7);
  EXPECT_EQ(WaitForOp("posted").get("context").get<double>(), 8);
}

TEST_F(MessagesTest, MakesOneInstanceForAContext) {
  Call({{"op", value("create")}, {"context", value(7.0)}, {"extension", value(kTester)}});
  Sync(7, "one", kTester);
  Sync(7, "two", kTester);
  Close(7);
  EXPECT_THAT(WaitForLog("TESTER", 2), testing::ElementsAre("created", "destroyed"));
}

TEST_F(MessagesTest, RefusesAContextThatIsClosed) {
  Sync(7, "hello", kTester);
  Close(7);
  EXPECT_THAT(Sync(7, "hello", kTester).get("error").to_str(), HasSubstr("context 7 is closed"));
}

TEST_F(MessagesTest, ClosesAContextThatWasNeverUsed) {
  const value answer = Call({{"op", value("close")}, {"context", value(99.0)}});
  EXPECT_TRUE(answer.contains("result"));
}

TEST_F(MessagesTest, NamesAnExtensionThatIsNotThere) {
  EXPECT_THAT(Sync(7, "x", "dravelt.orvan").get("error").to_str(),
              HasSubstr("Did you mean \"dravelt.orvane\"?"));
}

TEST_F(MessagesTest, ReplacesBytesThatAreNoText) {
  Sync(7, "bytes", kTester);
  EXPECT_EQ(WaitForOp("posted").get("text").to_str(), "not \xef\xbf\xbd utf-8");
}

TEST_F(MessagesTest, ReplacesHalvesOfCharacters) {
  SendFrame(R"({"op":"control","id":999,"method":"\ud800 and \ud83d\ude00"})", "");
  EXPECT_THAT(WaitForOp("answer").get("error").to_str(), HasSubstr("\xef\xbf\xbd and 😀"));
}

TEST_F(MessagesTest, SaysThatAReplyIsTooLong) {
  EXPECT_THAT(Sync(7, "long", kTester).get("error").to_str(), HasSubstr("limit"));
  EXPECT_EQ(Sync(7, "next", kTester).get("result").to_str(), "did next");
}

TEST_F(MessagesTest, RunsTheRuntimesMessagesInEachOfTheThreeWays) {
  EXPECT_EQ(Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red"), "success");
  EXPECT_EQ(Runtime("plain", "dravelt://orvane/setIMERecommendedType", "1"), "true");
  EXPECT_EQ(Runtime("async", "dravelt://orvane/setAuxHint", "a,b"), R"({"status":"success"})");
}

TEST_F(MessagesTest, ExplainsARefusalWithItsContext) {
  EXPECT_EQ(Runtime("sync", "tizen://api/inputdevice/registerKey", "NoSuchKey"), "error");
  const value explained = WaitForEvent("explain");
  EXPECT_THAT(explained.get("text").to_str(), HasSubstr("NoSuchKey"));
  EXPECT_EQ(explained.get("context").get<double>(), 1);
}

TEST_F(MessagesTest, AnswersWhetherTheApplicationHoldsAPrivilege) {
  const auto holds = [&](const char* name) {
    return Call({{"op", value("privilege")}, {"context", value(7.0)}, {"privilege", value(name)}})
        .get("result")
        .get<bool>();
  };
  EXPECT_TRUE(holds("http://tizen.org/privilege/tv.inputdevice"));
  EXPECT_FALSE(holds("http://tizen.org/privilege/tv.window"));
  EXPECT_THAT(WaitForEvent("explain").get("text").to_str(), HasSubstr("tv.window"));
}

TEST_F(MessagesTest, MovesTheWindow) {
  const auto widget = [&](const char* call, const array& arguments) {
    return Call({{"op", value("widget")},
                 {"context", value(7.0)},
                 {"call", value(call)},
                 {"args", value(arguments)}});
  };
  EXPECT_EQ(widget("move", {value(10.0), value(-20.0)}).get("result").to_str(), "success");
  EXPECT_EQ(State("windows").get("list").get(0).get("position").serialize(), "[10,-20]");
  EXPECT_EQ(widget("setQuarterPosition", {value(2.0)}).get("result").to_str(), "success");
  EXPECT_EQ(State("windows").get("list").get(0).get("quarterPosition").get<double>(), 2);
  EXPECT_THAT(widget("move", {value("left")}).get("error").to_str(), HasSubstr("whole number"));
  EXPECT_THAT(widget("fly", {}).get("error").to_str(), HasSubstr("\"call\""));
}

TEST_F(MessagesTest, RefusesRequestsItDoesNotKnow) {
  EXPECT_THAT(Call({{"op", value("dance")}}).get("error").to_str(), HasSubstr("\"dance\""));
  EXPECT_THAT(Call({{"op", value("sync")}, {"context", value(7.0)}}).get("error").to_str(),
              HasSubstr("\"extension\""));
  EXPECT_THAT(Call({{"op", value("sync")}, {"context", value(-7.0)}}).get("error").to_str(),
              HasSubstr("\"extension\""));
  EXPECT_THAT(ControlError("state.gt"), HasSubstr("Did you mean \"state.get\"?"));
}

TEST_F(MessagesTest, GoesOnAfterAFrameThatIsNoJson) {
  for (const std::string& head :
       {std::string("{not json"), std::string("[1]"), std::string(1000, '['), std::string()}) {
    SendFrame(head, "");
    EXPECT_THAT(WaitForOp("answer").get("error").to_str(), HasSubstr("A frame cannot be read"));
  }
  EXPECT_EQ(Sync(7, "next", kTester).get("result").to_str(), "did next");
}

TEST_F(MessagesTest, AnswersArgumentsThatAreNoNumbersOfAnySize) {
  SendFrame(R"({"op":"widget","id":998,"context":7,"call":"move"})", "[1e999,2]");
  EXPECT_THAT(WaitForAnswer(998).get("error").to_str(), HasSubstr("beyond the range of a double"));
  SendFrame(R"({"op":"widget","id":999,"context":7,"call":"move"})", "[");
  EXPECT_THAT(WaitForAnswer(999).get("error").to_str(), HasSubstr("no JSON"));
}

TEST_F(MessagesTest, AnswersParametersHoweverDeepTheyAre) {
  for (const size_t depth : {40U, 64U}) {
    const std::string name = std::string(depth, '[') + std::string(depth, ']');
    SendFrame(R"({"op":"control","id":999,"method":"keys.press","params":{"name":)" + name + "}}",
              "");
    EXPECT_THAT(WaitForAnswer(999).get("error").to_str(), HasSubstr("has to be a string"));
  }
}

using MessageDeadlineTest = SetProcessTest;

TEST_F(MessageDeadlineTest, NamesTheMessageThatGotNoReply) {
  Start({{"deadlineMs", value(200.0)}});
  EXPECT_THAT(Sync(7, "silence", kTester).get("error").to_str(), HasSubstr("silence"));
}

}  // namespace
}  // namespace orvane::television
