// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

class MessagesTest : public SetProcessTest {
 protected:
  MessagesTest() { Start(); }
};

TEST_F(MessagesTest, AnswersASynchronousMessageWithItsTime) {
  const Json answer = Sync(7, R"({"cmd":"OrvaneManager_getVersion","args":{}})");
  EXPECT_EQ(base::ParseJson(answer.at("result").get<std::string>()).at("result"), "3.9");
  EXPECT_GE(answer.at("us").get<double>(), 0);
}

TEST_F(MessagesTest, NotesEachMessageBeforeItIsHandled) {
  Sync(7, "hello", kTester);
  const auto message = WaitForMessage("sync");
  EXPECT_EQ(message.context, 7);
  EXPECT_EQ(message.name, kTester);
  EXPECT_EQ(message.text, "hello");
}

TEST_F(MessagesTest, NotesTheBeginningOfALongMessageOnly) {
  Sync(7, std::string(100000, 'x'), kTester);
  EXPECT_EQ(WaitForMessage("sync").text, std::string(4096, 'x'));
}

TEST_F(MessagesTest, PostsWhatTheExtensionAnswersLater) {
  Sync(7, R"({"cmd":"OrvaneManager_recordProfiling","args":{"label":"x","callbackId":5}})");
  const Json posted = WaitForOp("posted");
  EXPECT_EQ(posted.at("context"), 7);
  EXPECT_EQ(posted.at("extension"), kOrvane);
  EXPECT_EQ(base::ParseJson(posted.at("text").get<std::string>()).at("callbackId"), 5);
}

TEST_F(MessagesTest, KeepsTheOrderOfPostedMessages) {
  Sync(7, "post:1000", kTester);
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(WaitForOp("posted").at("text"), std::to_string(i));
  }
}

TEST_F(MessagesTest, HandsPostedMessagesOnWithoutAnAnswer) {
  Post(7, "hello", kTester);
  EXPECT_EQ(WaitForOp("posted").at("text"), "got hello");
}

TEST_F(MessagesTest, KeepsContextsApart) {
  Post(7, "a", kTester);
  Post(8, "b", kTester);
  EXPECT_EQ(WaitForOp("posted").at("context"), 7);
  EXPECT_EQ(WaitForOp("posted").at("context"), 8);
}

TEST_F(MessagesTest, MakesOneInstanceForAContext) {
  Call({{"op", "create"}, {"context", 7}, {"extension", kTester}});
  Sync(7, "one", kTester);
  Sync(7, "two", kTester);
  Close(7);
  EXPECT_THAT(WaitForLog("TESTER", 2), testing::ElementsAre("created", "destroyed"));
}

TEST_F(MessagesTest, RefusesAContextThatIsClosed) {
  Sync(7, "hello", kTester);
  Close(7);
  EXPECT_THAT(Sync(7, "hello", kTester).at("error").get<std::string>(),
              HasSubstr("context 7 is closed"));
}

TEST_F(MessagesTest, ClosesAContextThatWasNeverUsed) {
  const Json answer = Call({{"op", "close"}, {"context", 99}});
  EXPECT_TRUE(answer.contains("result"));
}

TEST_F(MessagesTest, NamesAnExtensionThatIsNotThere) {
  EXPECT_THAT(Sync(7, "x", "dravelt.orvan").at("error").get<std::string>(),
              HasSubstr("Did you mean \"dravelt.orvane\"?"));
}

TEST_F(MessagesTest, ReplacesBytesThatAreNoText) {
  Sync(7, "bytes", kTester);
  EXPECT_EQ(WaitForOp("posted").at("text"), "not \xef\xbf\xbd utf-8");
}

TEST_F(MessagesTest, ReplacesHalvesOfCharacters) {
  SendFrame(R"({"op":"control","id":999,"method":"\ud800 and \ud83d\ude00"})", "");
  EXPECT_THAT(WaitForOp("answer").at("error").get<std::string>(), HasSubstr("\xef\xbf\xbd and 😀"));
}

TEST_F(MessagesTest, SaysThatAReplyIsTooLong) {
  EXPECT_THAT(Sync(7, "long", kTester).at("error").get<std::string>(), HasSubstr("limit"));
  EXPECT_EQ(Sync(7, "next", kTester).at("result"), "did next");
}

TEST_F(MessagesTest, RunsTheRuntimesMessagesInEachOfTheThreeWays) {
  EXPECT_EQ(Runtime("sync", "tizen://api/inputdevice/registerKey", "XF86Red"), "success");
  EXPECT_EQ(Runtime("plain", "dravelt://orvane/setIMERecommendedType", "1"), "true");
  EXPECT_EQ(Runtime("async", "dravelt://orvane/setAuxHint", "a,b"), R"({"status":"success"})");
}

TEST_F(MessagesTest, ExplainsARefusalWithItsContext) {
  EXPECT_EQ(Runtime("sync", "tizen://api/inputdevice/registerKey", "NoSuchKey"), "error");
  const Json explained = WaitForEvent("explain");
  EXPECT_THAT(explained.at("text").get<std::string>(), HasSubstr("NoSuchKey"));
  EXPECT_EQ(explained.at("context"), 1);
}

TEST_F(MessagesTest, AnswersWhetherTheApplicationHoldsAPrivilege) {
  const auto holds = [&](const char* name) {
    return Call({{"op", "privilege"}, {"context", 7}, {"privilege", name}})
        .at("result")
        .get<bool>();
  };
  EXPECT_TRUE(holds("http://tizen.org/privilege/tv.inputdevice"));
  EXPECT_FALSE(holds("http://tizen.org/privilege/tv.window"));
  EXPECT_THAT(WaitForEvent("explain").at("text").get<std::string>(), HasSubstr("tv.window"));
}

TEST_F(MessagesTest, MovesTheWindow) {
  const auto widget = [&](const char* call, const Json& arguments) {
    return Call({{"op", "widget"}, {"context", 7}, {"call", call}, {"args", arguments}});
  };
  EXPECT_EQ(widget("move", {10, -20}).at("result"), "success");
  EXPECT_EQ(State("windows").at("list").at(0).at("position").dump(), "[10,-20]");
  EXPECT_EQ(widget("setQuarterPosition", {2}).at("result"), "success");
  EXPECT_EQ(State("windows").at("list").at(0).at("quarterPosition"), 2);
  EXPECT_THAT(widget("move", {"left"}).at("error").get<std::string>(), HasSubstr("whole number"));
  EXPECT_THAT(widget("fly", {}).at("error").get<std::string>(), HasSubstr("\"call\""));
}

TEST_F(MessagesTest, RefusesRequestsItDoesNotKnow) {
  EXPECT_THAT(Call({{"op", "dance"}}).at("error").get<std::string>(), HasSubstr("\"dance\""));
  EXPECT_THAT(Call({{"op", "sync"}, {"context", 7}}).at("error").get<std::string>(),
              HasSubstr("\"extension\""));
  EXPECT_THAT(Call({{"op", "sync"}, {"context", -7}}).at("error").get<std::string>(),
              HasSubstr("\"extension\""));
  EXPECT_THAT(ControlError("state.gt"), HasSubstr("Did you mean \"state.get\"?"));
}

TEST_F(MessagesTest, GoesOnAfterAFrameThatIsNoJson) {
  for (const std::string& head :
       {std::string("{not json"), std::string("[1]"), std::string(1000, '['), std::string()}) {
    SendFrame(head, "");
    EXPECT_THAT(WaitForOp("answer").at("error").get<std::string>(),
                HasSubstr("A frame cannot be read"));
  }
  EXPECT_EQ(Sync(7, "next", kTester).at("result"), "did next");
}

TEST_F(MessagesTest, AnswersArgumentsThatAreNoNumbersOfAnySize) {
  SendFrame(R"({"op":"widget","id":998,"context":7,"call":"move"})", "[1e999,2]");
  EXPECT_THAT(WaitForAnswer(998).at("error").get<std::string>(),
              HasSubstr("beyond the range of a double"));
  SendFrame(R"({"op":"widget","id":999,"context":7,"call":"move"})", "[");
  EXPECT_THAT(WaitForAnswer(999).at("error").get<std::string>(), HasSubstr("no JSON"));
}

TEST_F(MessagesTest, AnswersParametersHoweverDeepTheyAre) {
  for (const size_t depth : {40U, 64U}) {
    const std::string name = std::string(depth, '[') + std::string(depth, ']');
    SendFrame(R"({"op":"control","id":999,"method":"keys.press","params":{"name":)" + name + "}}",
              "");
    EXPECT_THAT(WaitForAnswer(999).at("error").get<std::string>(), HasSubstr("has to be a string"));
  }
}

using MessageDeadlineTest = SetProcessTest;

TEST_F(MessageDeadlineTest, NamesTheMessageThatGotNoReply) {
  Start({{"deadlineMs", 200}});
  EXPECT_THAT(Sync(7, "silence", kTester).at("error").get<std::string>(), HasSubstr("silence"));
}

}  // namespace
}  // namespace orvane::television
