// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The verbs that talk to a running simulator, with a stand-in for it.
#include <string>

#include "command.h"
#include "fake_simulator.h"

namespace orvane::cli {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kRedReached[] =
    R"({"delivered":true,"key_name":"XF86Red","text":"XF86Red reaches it"})";

class SimulatorTest : public CommandTest {
 protected:
  FakeSimulator Answering(const std::string& answer) {
    return {state(), [answer](const FakeSimulator::Request&) { return answer; }};
  }
};

TEST_F(SimulatorTest, IsAskedWithItsTokenAndHost) {
  FakeSimulator simulator = Answering(FakeSimulator::Result(kRedReached));

  EXPECT_EQ(Run({"key", "red", "--long"}).exit_code, 0);

  ASSERT_EQ(simulator.requests().size(), 1U);
  const FakeSimulator::Request request = simulator.requests()[0];
  EXPECT_THAT(request.head, HasSubstr("POST /api/call HTTP/1.1\r\n"));
  EXPECT_THAT(request.head, HasSubstr("Host: localhost:"));
  EXPECT_THAT(request.head, HasSubstr("X-Orvane-Token: secret\r\n"));
  EXPECT_EQ(base::JsonText(request.body),
            R"({"method":"keys.press","params":{"long":true,"name":"red"}})");
}

TEST_F(SimulatorTest, IsMissedByEveryVerb) {
  const std::vector<std::vector<std::string>> verbs = {
      {"key", "Left"}, {"log"}, {"screenshot", "x.png"}, {"fail", "dlog_print", "-1"}, {"apps"}};
  for (const auto& verb : verbs) {
    const Outcome outcome = Run(verb);
    EXPECT_EQ(outcome.exit_code, 4) << verb[0];
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr("no simulator runs on " + state().string()));
    EXPECT_THAT(outcome.err, HasSubstr("orvane run"));
  }
}

TEST_F(SimulatorTest, IsMissedWhenItsProcessHasEnded) {
  FakeSimulator simulator = Answering(FakeSimulator::Result("null"));
  simulator.WriteFile("pid", 999999999);
  const Outcome outcome = Run({"apps"});
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_THAT(outcome.err, HasSubstr("ended without cleaning up"));
  EXPECT_THAT(simulator.requests(), IsEmpty());
}

TEST_F(SimulatorTest, IsNeverLookedForOnAnotherMachine) {
  FakeSimulator simulator = Answering(FakeSimulator::Result("null"));
  for (const char* url : {"http://example.org:80/", "http://localhost.example.org:80/", "", "x"}) {
    simulator.WriteFile("api", url);
    const Outcome outcome = Run({"apps"});
    EXPECT_EQ(outcome.exit_code, 4) << url;
    EXPECT_THAT(outcome.err, HasSubstr("does not say where the simulator is")) << url;
  }
}

TEST_F(SimulatorTest, IsMissedWhenNobodyListens) {
  { FakeSimulator gone = Answering(""); }
  const Outcome outcome = Run({"apps"});
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_THAT(outcome.err, HasSubstr("does not answer: nobody answers at localhost:"));
}

TEST_F(SimulatorTest, MaySayNothingOrNonsense) {
  for (const char* answer : {"", "not HTTP at all\r\n\r\n", "HTTP/1.1 200 OK\r\n",
                             "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\nshort"}) {
    FakeSimulator simulator = Answering(answer);
    const Outcome outcome = Run({"apps"});
    EXPECT_EQ(outcome.exit_code, 4) << answer;
    EXPECT_THAT(outcome.err, HasSubstr("does not answer")) << answer;
  }
}

TEST_F(SimulatorTest, IsMissedWhenItsFileIsNone) {
  FakeSimulator simulator = Answering(FakeSimulator::Result("null"));
  for (const Json& pid : {Json(-1), Json(1e300), Json("1"), Json()}) {
    simulator.WriteFile("pid", pid);
    EXPECT_EQ(Run({"apps"}).exit_code, 4) << pid;
  }
  std::filesystem::remove(state() / "run/simulator.json");
  std::filesystem::create_directories(state() / "run/simulator.json");
  const Outcome outcome = Run({"apps"});
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_THAT(outcome.err, HasSubstr("does not say where the simulator is"));
}

TEST_F(SimulatorTest, MayAnswerInAnotherForm) {
  const std::vector<std::vector<std::string>> verbs = {
      {"key", "Left"}, {"log"}, {"screenshot", "x.png"}, {"fail"}, {"apps"}};
  for (const char* result : {"null", "5", "[]", "\"x\"", "{}", R"({"lines":[5],"faults":{}})"}) {
    FakeSimulator simulator = Answering(FakeSimulator::Result(result));
    for (const auto& verb : verbs) {
      const Outcome outcome = Run(verb);
      EXPECT_LE(outcome.exit_code, 1) << verb[0] << " " << result << ": " << outcome.err;
    }
  }
}

TEST_F(SimulatorTest, TellsTimesWithAllTheirDigits) {
  FakeSimulator simulator = Answering(
      FakeSimulator::Result(R"({"delivered":true,"time_ns":1795249985963887616,"a/b":[1.5]})"));
  EXPECT_EQ(Run({"key", "red", "--json"}).out,
            "{\"a/b\":[1.5],\"delivered\":true,\"time_ns\":1795249985963887616}\n");
}

TEST_F(SimulatorTest, MayBeAnotherProgram) {
  FakeSimulator simulator = Answering(FakeSimulator::Ok("<html>"));
  const Outcome outcome = Run({"apps"});
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_THAT(outcome.err, HasSubstr("is no simulator: status 200 and no JSON"));
}

TEST_F(SimulatorTest, SaysItselfWhatItRefuses) {
  FakeSimulator simulator =
      Answering(FakeSimulator::Ok(R"({"error":{"message":"No such key. Did you mean X?"}})"));
  const Outcome outcome = Run({"key", "nosuch"});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(outcome.err, "orvane: No such key. Did you mean X?\n");
}

TEST_F(SimulatorTest, MayRefuseWithoutAReason) {
  FakeSimulator simulator = Answering("HTTP/1.1 500 Oh\r\nContent-Length: 2\r\n\r\n{}");
  const Outcome outcome = Run({"apps"});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, HasSubstr("refused state.get with status 500"));
}

TEST_F(SimulatorTest, MayBeThatOfAnotherRun) {
  FakeSimulator simulator = Answering("HTTP/1.1 403 Forbidden\r\nContent-Length: 5\r\n\r\nwrong");
  const Outcome outcome = Run({"apps"});
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_THAT(outcome.err, HasSubstr("left behind by another run?"));
}

TEST_F(SimulatorTest, MaySendItsAnswerInChunks) {
  FakeSimulator simulator = Answering(
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
      "a\r\n{\"result\":\r\n3\r\n{}}\r\n0\r\n\r\n");
  EXPECT_EQ(Run({"apps", "--json"}).out, "null\n");
}

using KeyTest = SimulatorTest;

TEST_F(KeyTest, SaysWhereTheKeyWent) {
  FakeSimulator simulator = Answering(FakeSimulator::Result(kRedReached));
  const Outcome outcome = Run({"key", "XF86Red"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.out, "XF86Red reaches it.\n");
  EXPECT_EQ(Run({"key", "XF86Red", "--json"}).out, std::string(kRedReached) + "\n");
}

TEST_F(KeyTest, FailsWhenTheKeyReachesNobody) {
  FakeSimulator simulator = Answering(FakeSimulator::Result(
      R"({"delivered":false,"text":"XF86Red reaches nobody: App registered it not"})"));
  const Outcome outcome = Run({"key", "XF86Red"});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("reaches nobody"));
}

using AppsTest = SimulatorTest;

TEST_F(AppsTest, ListsThemWithStateAndFocus) {
  FakeSimulator simulator = Answering(FakeSimulator::Result(
      R"({"focused":"b.B","applications":[)"
      R"({"id":"a.A","name":"First","running":false,"stateName":null},)"
      R"({"id":"b.B","name":"Second","running":true,"stateName":"FOREGROUND"}]})"));
  const Outcome outcome = Run({"apps"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.out, testing::MatchesRegex("  a.A +not running +First\n"
                                                 "\\* b.B +FOREGROUND +Second\n"));
  EXPECT_THAT(Run({"apps", "--json"}).out, testing::StartsWith("[{\"id\":\"a.A\""));
}

using FailTest = SimulatorTest;

TEST_F(FailTest, SetsListsAndClears) {
  FakeSimulator simulator = Answering(
      FakeSimulator::Result(R"({"faults":[{"function":"dlog_print","code":-1,"mode":"once"}]})"));
  EXPECT_EQ(Run({"fail", "dlog_print", "-1", "--once"}).exit_code, 0);
  EXPECT_EQ(Run({"fail"}).out, "dlog_print -1 once\n");
  EXPECT_EQ(Run({"fail", "--clear"}).exit_code, 0);
  EXPECT_EQ(Run({"fail", "dlog_print", "--clear"}).exit_code, 0);
  const auto requests = simulator.requests();
  ASSERT_EQ(requests.size(), 4U);
  EXPECT_EQ(base::JsonText(requests[0].body["params"]),
            R"({"code":-1,"function":"dlog_print","mode":"once"})");
  EXPECT_EQ(base::JsonText(requests[2].body),
            R"({"method":"faults.clear","params":{"function":null}})");
  EXPECT_EQ(requests[3].body["params"]["function"], "dlog_print");
}

TEST_F(FailTest, RefusesHalfAFault) {
  EXPECT_EQ(Run({"fail", "dlog_print"}).exit_code, 2);
  EXPECT_THAT(Run({"fail", "dlog_print"}).err, HasSubstr("orvane fail dlog_print -1"));
  EXPECT_EQ(Run({"fail", "dlog_print", "-1", "--clear"}).exit_code, 2);
  EXPECT_EQ(Run({"fail", "dlog_print", "many"}).exit_code, 2);
}

TEST_F(FailTest, SaysHowTheOptionsFormIsWritten) {
  EXPECT_THAT(Run({"fail", "dlog_print=-3"}).err, HasSubstr("orvane fail dlog_print -3."));
  EXPECT_THAT(Run({"fail", "dlog_print=-3:once"}).err,
              HasSubstr("orvane fail dlog_print -3 --once."));
  EXPECT_THAT(Run({"fail", "dlog_print="}).err, HasSubstr("orvane fail dlog_print -1."));
  EXPECT_EQ(Run({"fail", "dlog_print=-3"}).exit_code, 2);
}

using ScreenshotTest = SimulatorTest;

TEST_F(ScreenshotTest, WritesThePicture) {
  FakeSimulator simulator =
      Answering(FakeSimulator::Result(R"({"png":"iVBORw0KGgo=","fresh":true})"));
  EXPECT_EQ(Run({"screenshot", "shot.png"}).exit_code, 0);
  EXPECT_EQ(ReadText(folder() / "shot.png"), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(Run({"screenshot", "-"}).out, "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(Run({"screenshot", "shot.png", "--json"}).out,
            "{\"bytes\":8,\"file\":\"shot.png\",\"fresh\":true}\n");
}

TEST_F(ScreenshotTest, LeavesNoFileWithoutAPicture) {
  for (const char* png : {"\"\"", "\"not base64!\"", "\"abc\"", "null"}) {
    FakeSimulator simulator =
        Answering(FakeSimulator::Result(std::string("{\"png\":") + png + "}"));
    const Outcome outcome = Run({"screenshot", "shot.png"});
    EXPECT_EQ(outcome.exit_code, 1) << png;
    EXPECT_THAT(outcome.err, HasSubstr("no picture"));
    EXPECT_FALSE(std::filesystem::exists(folder() / "shot.png"));
  }
}

TEST_F(ScreenshotTest, SaysThatTheFileCannotBeWritten) {
  FakeSimulator simulator = Answering(FakeSimulator::Result(R"({"png":"iVBORw0KGgo="})"));
  const Outcome outcome = Run({"screenshot", "no/such/folder/shot.png"});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, HasSubstr("cannot be written"));
}

class LogTest : public CommandTest {
 protected:
  // Three lines, two a call, as a simulator that pages through them.
  static std::string Answer(const FakeSimulator::Request& request) {
    if (request.body.is_null()) return "";  // what a socket would be, and gets no answer
    const int since = request.body["params"]["since"];
    if (since == 0) {
      return FakeSimulator::Result(
          R"({"next":2,"lines":[)"
          R"({"seq":0,"time_ns":1,"pid":7,"tid":8,"priority":4,"letter":"I","tag":"A","text":"one"},)"
          R"({"seq":1,"time_ns":1,"pid":7,"tid":8,"priority":6,"letter":"E","tag":"A","text":"two"}]})");
    }
    if (since == 2) {
      return FakeSimulator::Result(
          R"({"next":3,"lines":[)"
          R"({"seq":2,"time_ns":1,"pid":7,"tid":8,"priority":5,"letter":"W","tag":"B","text":"three"}]})");
    }
    return FakeSimulator::Result(R"({"next":3,"lines":[]})");
  }
};

TEST_F(LogTest, PrintsEveryLineInTheFormOfTheSet) {
  FakeSimulator simulator(state(), Answer);
  const Outcome outcome = Run({"log"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.out,
            "I/A       (    7): one\nE/A       (    7): two\nW/B       (    7): three\n");
}

TEST_F(LogTest, PrintsLinesOfATagFromALevelOn) {
  FakeSimulator simulator(state(), Answer);
  EXPECT_EQ(Run({"log", "--tag", "A", "--format", "raw"}).out, "one\ntwo\n");
  EXPECT_EQ(Run({"log", "--level", "warn", "--format", "raw"}).out, "two\nthree\n");
  EXPECT_EQ(Run({"log", "--tag", "A", "--level", "E", "--format", "raw"}).out, "two\n");
}

TEST_F(LogTest, PrintsAnObjectForEachLine) {
  FakeSimulator simulator(state(), Answer);
  EXPECT_THAT(Run({"log", "--json", "--tag", "B"}).out,
              testing::MatchesRegex("\\{.*\"seq\":2,.*\"text\":\"three\".*\\}\n"));
}

TEST_F(LogTest, FollowsWhatTheSimulatorTells) {
  int calls = 0;
  FakeSimulator simulator(state(), [&](const FakeSimulator::Request& request) {
    return ++calls > 3 ? std::string() : Answer(request);
  });
  simulator.set_messages(
      {R"({"events":[{"name":"process","data":{}},{"name":"log","data":[)"
       R"({"seq":3,"time_ns":1,"pid":7,"tid":8,"priority":5,"letter":"W","tag":"B","text":"three again"},)"
       R"({"seq":4,"time_ns":1,"pid":7,"tid":8,"priority":5,"letter":"W","tag":"B","text":"four"}]}]})",
       R"({"events":[{"name":"log","data":[)"
       R"({"seq":5,"time_ns":1,"pid":7,"tid":8,"priority":5,"letter":"W","tag":"B","text":"five"}]}]})"});
  const Outcome outcome = Run({"log", "-f", "--format", "raw"});
  EXPECT_EQ(outcome.out, "one\ntwo\nthree\nfour\nfive\n");
  // This one is still there, but does not answer.
  EXPECT_EQ(outcome.exit_code, 4);
}

TEST_F(LogTest, FollowsNobodyWhoHasNoSocket) {
  FakeSimulator simulator(state(), Answer);
  const Outcome outcome = Run({"log", "-f"});
  EXPECT_EQ(outcome.exit_code, 4);
  EXPECT_THAT(outcome.err, HasSubstr("does not answer"));
}

TEST_F(LogTest, RefusesALevelAndAFormatThatThereAreNot) {
  EXPECT_EQ(Run({"log", "--level", "loud"}).exit_code, 2);
  EXPECT_EQ(Run({"log", "--format", "pretty"}).exit_code, 2);
}

}  // namespace
}  // namespace orvane::cli
