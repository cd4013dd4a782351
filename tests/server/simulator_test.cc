// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <gmock/gmock.h>

#include "base/json.h"
#include "test_server.h"

namespace orvane::server {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class SimulatorTest : public ServerTest {
 protected:
  RawClient OpenSimulator() const {
    RawClient client(simulator_port());
    EXPECT_EQ(client.Upgrade("/api?token=" + secret(),
                             {{"Host", simulator_host()}, {"Origin", simulator_origin()}}),
              101);
    return client;
  }
};

TEST_F(SimulatorTest, HandsUnknownMethodsToTheSetProcess) {
  Start();
  RawClient simulator = OpenSimulator();
  simulator.SendText(R"({"id":5,"method":"keys.press","params":{"name":"Left"}})");
  EXPECT_EQ(simulator.ReceiveText(), R"({"id":5,"result":{"name":"Left"}})");
}

TEST_F(SimulatorTest, AnswersCallsWhateverTheirParametersHold) {
  Start();
  EXPECT_THAT(Call("keys.press", R"({"name":1e999})"), HasSubstr("beyond the range of a double"));
  const std::string deep = R"({"name":)" + std::string(40, '[') + std::string(40, ']') + "}";
  EXPECT_EQ(Call("keys.press", deep), R"({"result":)" + deep + "}");
  const std::string deepest = R"({"name":)" + std::string(61, '[') + std::string(61, ']') + "}";
  EXPECT_EQ(Call("keys.press", deepest), R"({"result":)" + deepest + "}");
}

TEST_F(SimulatorTest, RefusesCallsThatAreNone) {
  Start();
  EXPECT_THAT(Call("", "{}"), HasSubstr("error"));
  EXPECT_THAT(Call("run.info", "[]"), HasSubstr("error"));
  EXPECT_EQ(RawClient(simulator_port())
                .Request("POST", "/api/call",
                         {{"Host", simulator_host()}, {"X-Orvane-Token", secret()}}, "nonsense")
                .status,
            400);
}

TEST_F(SimulatorTest, TellsEventsAsTheyCome) {
  Start();
  RawClient simulator = OpenSimulator();
  simulator.SendText(R"({"id":1,"method":"event","params":{"name":"focus","data":"x"}})");
  const std::string both =
      simulator.ReceiveText().value_or("") + simulator.ReceiveText().value_or("");
  EXPECT_THAT(both, AllOf(HasSubstr(R"({"events":[{"name":"focus","data":"x"}]})"),
                          HasSubstr(R"({"id":1,"result":)")));
}

// An event with a line of that number and text.
std::string LogEvent(int number, const std::string& text) {
  const Json line{{"seq", number}, {"text", text}};
  return base::JsonText({{"name", "log"}, {"body", base::JsonText(line) + "\n"}});
}

TEST_F(SimulatorTest, KeepsLogLinesWithTheirNumbers) {
  Start();
  Call("event", LogEvent(1, "one"));
  Call("event", LogEvent(2, "two"));
  EXPECT_EQ(Call("log.list"),
            R"({"result":{"next":2,"lines":[{"seq":1,"text":"one"},{"seq":2,"text":"two"}]}})");
  EXPECT_EQ(Call("log.list", R"({"since":1})"),
            R"({"result":{"next":2,"lines":[{"seq":2,"text":"two"}]}})");
}

TEST_F(SimulatorTest, DisconnectsASimulatorThatDoesNotReadAndHasWhatItMissed) {
  options().limits.queued_bytes = 1000000;
  Start();
  RawClient slow = OpenSimulator();
  const std::string text(200000, 'x');
  constexpr int kLines = 100;  // twenty megabytes, of which the kernel keeps a few
  for (int i = 1; i <= kLines; ++i) Call("event", LogEvent(i, text));
  int seen = 0;
  while (slow.ReceiveText()) ++seen;
  EXPECT_LT(seen, kLines);
  RawClient again = OpenSimulator();
  again.SendText(R"({"id":1,"method":"log.list","params":{"since":98}})");
  const std::string missed = again.ReceiveText().value_or("");
  EXPECT_THAT(missed, AllOf(HasSubstr(R"("lines":[{"seq":99,)"), HasSubstr(R"({"seq":100,)"),
                            HasSubstr(R"("next":100)")));
}

TEST_F(SimulatorTest, TracesACallAsOneRecordWithItsAnswer) {
  Start();
  Sync(OpenPage(), Message(1, "echo"));
  EXPECT_THAT(Call("trace.list"),
              AllOf(HasSubstr(R"("direction":"fromPage","kind":"nativeSync",)"),
                    HasSubstr(R"("peer":"test.ext","payload":"{\"cmd\":\"echo\"}",)"
                              R"("reply":"{\"cmd\":\"echo\"}")"),
                    HasSubstr(R"("us":7)"), HasSubstr(R"("next":1)")));
}

TEST_F(SimulatorTest, TracesWhatTheLibraryPosts) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "post", R"(,"count":1)"));
  page.client.ReceiveText();
  EXPECT_THAT(
      Call("trace.list"),
      HasSubstr(R"("direction":"toPage","kind":"nativePost","peer":"test.ext","payload":"1")"));
}

TEST_F(SimulatorTest, ExportsASession) {
  Start();
  Sync(OpenPage(), Message(1, "echo"));
  EXPECT_THAT(Call("trace.export"),
              AllOf(HasSubstr(R"("created":"20)"), HasSubstr(R"("orvane":1)"),
                    HasSubstr(R"("records":[{"time_ns":)"), HasSubstr(R"("context":1)")));
}

TEST_F(SimulatorTest, KeepsTheConsoleAndTheExplanations) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(R"({"type":"console","level":"warn","text":"careful"})");
  page.client.SendText(R"({"type":"explain","text":"because"})");
  EXPECT_THAT(CallUntil("explain.list", "because"), HasSubstr(R"("context":1)"));
  EXPECT_THAT(Call("console.list"), HasSubstr(R"({"context":1,"level":"warn",)"));
}

TEST_F(SimulatorTest, TellsOfTheRun) {
  Start();
  EXPECT_THAT(Call("run.info"), AllOf(HasSubstr(R"("id":"0123456789.App")"),
                                      HasSubstr(R"("appUrl":")" + app_origin() + "\""),
                                      HasSubstr(R"("startPath":"/index.html")")));
}

}  // namespace
}  // namespace orvane::server
