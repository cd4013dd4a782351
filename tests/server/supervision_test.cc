// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <signal.h>

#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "test_server.h"

namespace orvane::server {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class SupervisionTest : public ServerTest {};

TEST_F(SupervisionTest, AnswersASynchronousMessageOverTheSocket) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "echo"));
  EXPECT_EQ(page.client.ReceiveText(), R"({"id":1,"seq":1,"type":"answer","us":7})"
                                       "\n"
                                       R"({"cmd":"echo"})");
}

TEST_F(SupervisionTest, AnswersASynchronousMessageOverARequest) {
  Start();
  const TestPage page = OpenPage();
  EXPECT_EQ(Sync(page, Message(1, "echo")).body, R"({"id":1,"type":"answer","us":7})"
                                                 "\n"
                                                 R"({"cmd":"echo"})");
}

TEST_F(SupervisionTest, RefusesMalformedMessagesAndGoesOn) {
  Start();
  TestPage page = ConnectPage();
  for (const char* text : {"", "nonsense", "[]", "{\"id\":", R"({"type":"sync"})", "{\"id\":{}}"}) {
    page.client.SendText(text);
  }
  page.client.SendText(R"({"type":"sync","id":1,"extension":5})");
  EXPECT_THAT(page.client.ReceiveText().value_or(""), HasSubstr(R"("id":1,"seq":1)"));
  page.client.SendText(R"({"type":"echo","id":2})");
  EXPECT_EQ(page.client.ReceiveText(), R"({"id":2,"result":null,"seq":2,"type":"answer"})");
}

TEST_F(SupervisionTest, AnswersEveryRequestWhateverItHolds) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(R"({"type":"widget","id":1,"call":"move","args":[1e999,2]})");
  EXPECT_THAT(page.client.ReceiveText().value_or(""),
              AllOf(HasSubstr("beyond the range of a double"), HasSubstr(R"("id":1)")));
  const std::string deep = std::string(100, '[') + std::string(100, ']');
  EXPECT_THAT(Sync(page, R"({"type":"widget","id":2,"call":"move","args":)" + deep + "}").body,
              AllOf(HasSubstr("nests deeper"), HasSubstr(R"("id":2)")));
  EXPECT_THAT(Sync(page, R"({"type":"sync","id":3,"extension":"test.ext"})").body,
              HasSubstr("has no text"));
  EXPECT_THAT(Sync(page, R"({"type":"nothing","id":4})").body, HasSubstr("known to nobody"));
  EXPECT_THAT(Sync(page, R"({"id":"x"})").body, HasSubstr("a whole number"));
  EXPECT_THAT(Sync(page, "nonsense").body, HasSubstr("no JSON"));
}

TEST_F(SupervisionTest, HandlesAMessageThatIsSentAgainOnce) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "echo"));
  page.client.SendText(Message(1, "echo"));
  page.client.SendText(R"({"type":"echo","id":2})");
  EXPECT_THAT(page.client.ReceiveText().value_or(""), HasSubstr(R"("seq":1)"));
  EXPECT_THAT(page.client.ReceiveText().value_or(""),
              HasSubstr(R"({"id":2,"result":null,"seq":2,"type":"answer"})"));
}

TEST_F(SupervisionTest, FailsTheCallThatTheLibraryDiedOf) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "crash"));
  EXPECT_THAT(page.client.ReceiveText().value_or(""),
              AllOf(HasSubstr(R"("error":"test.ext crash: )"), HasSubstr(R"("id":1)"),
                    HasSubstr("signal 6")));
  EXPECT_EQ(page.client.ReceiveText(), R"({"seq":2,"type":"restarted"})");
  page.client.SendText(Message(2, "echo"));
  EXPECT_THAT(page.client.ReceiveText().value_or(""),
              HasSubstr(R"({"id":2,"seq":3,"type":"answer","us":7})"));
}

TEST_F(SupervisionTest, ReportsADeathWithItsMessageAndItsLastWords) {
  Start();
  Sync(OpenPage(), Message(1, "crash"));
  EXPECT_THAT(CallUntil("process.get", R"("state":"running")"),
              AllOf(HasSubstr(R"("signal":6)"), HasSubstr("about to crash"),
                    HasSubstr(R"("handling":{"context":1,"name":"test.ext")")));
}

TEST_F(SupervisionTest, StopsRestartingALibraryThatDiesAgainAndAgain) {
  Start();
  const TestPage page = OpenPage();
  for (int id = 1; id <= 3; ++id) Sync(page, Message(id, "crash"));
  EXPECT_THAT(CallUntil("process.get", R"("state":"down")"), HasSubstr(R"("pid":0)"));
  EXPECT_THAT(Sync(page, Message(4, "echo")).body, HasSubstr("the set process is down"));
  Call("process.restart");
  EXPECT_THAT(Sync(page, Message(5, "echo")).body, HasSubstr(R"("type":"answer","us":7})"));
}

TEST_F(SupervisionTest, FailsACallAtItsDeadlineAndNamesIt) {
  options().deadline = std::chrono::milliseconds(200);
  Start();
  EXPECT_THAT(Sync(OpenPage(), Message(1, "hang")).body,
              AllOf(HasSubstr("test.ext hang: there was no answer within 0.2 s"),
                    HasSubstr(R"(sync test.ext \"hang\")")));
}

TEST_F(SupervisionTest, EndsALibraryThatStaysInAHandler) {
  options().deadline = std::chrono::milliseconds(100);
  options().patience = std::chrono::milliseconds(200);
  Start();
  const TestPage page = OpenPage();
  Sync(page, Message(1, "hang"));
  EXPECT_THAT(CallUntil("process.get", R"("signal":9)"), HasSubstr("for more than 0.3 s"));
}

TEST_F(SupervisionTest, NamesTheLastMessageOfALibraryThatDiesWithNoneInHand) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(R"({"type":"post","id":1,"extension":"test.ext"})"
                       "\n"
                       R"({"cmd":"tell"})");
  page.client.SendText(Message(2, "echo"));
  ASSERT_THAT(page.client.ReceiveText().value_or(""), HasSubstr(R"("id":2)"));
  const std::string answer = Call("process.get");
  const std::string member = R"("pid":)";
  const int pid = std::stoi(answer.substr(answer.find(member) + member.size()));
  ASSERT_GT(pid, 1) << answer;
  ASSERT_EQ(kill(pid, SIGKILL), 0);
  EXPECT_THAT(CallUntil("process.get", R"("signal":9)"),
              AllOf(HasSubstr(R"("handling":null)"),
                    HasSubstr(R"(with no message in hand; the last one was sync test.ext)")));
}

TEST_F(SupervisionTest, EndsWhileTheLibraryHangs) {
  options().deadline = std::chrono::milliseconds(100);
  Start();
  Sync(OpenPage(), Message(1, "hang"));
  StopServer();  // returns
}

TEST_F(SupervisionTest, EndsALibraryThatDoesNotStart) {
  options().deadline = std::chrono::milliseconds(100);
  options().patience = std::chrono::milliseconds(200);
  options().set_process_command = {"/bin/sh", "-c", "exec sleep 1000"};
  RunServer server(options());
  try {
    server.Run();
    ADD_FAILURE() << "it ran";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("it had not started after 0.3 s"));
  }
}

TEST_F(SupervisionTest, StaysUpWhenTheLibraryCannotBeStartedAgain) {
  const auto program = folder() / "set-process";
  std::filesystem::create_symlink(FAKE_SET_PROCESS, program);
  options().set_process_command = {program.string()};
  Start();
  const TestPage page = OpenPage();
  std::filesystem::rename(program, folder() / "away");  // as while it is being built
  Sync(page, Message(1, "crash"));
  CallUntil("process.get", R"("state":"down")");
  EXPECT_THAT(Sync(page, Message(2, "echo")).body, HasSubstr("the set process is down"));
  std::filesystem::rename(folder() / "away", program);
  Call("process.restart");
  EXPECT_THAT(Sync(page, Message(3, "echo")).body, HasSubstr(R"("type":"answer","us":7})"));
}

TEST_F(SupervisionTest, SaysWhyALibraryCannotStart) {
  options().set_process_command = {"/bin/false"};
  RunServer server(options());
  EXPECT_THROW(server.Run(), std::runtime_error);
}

}  // namespace
}  // namespace orvane::server
