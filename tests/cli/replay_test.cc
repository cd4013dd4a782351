// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include "command.h"

namespace orvane::cli {
namespace {

using testing::HasSubstr;

class ReplayTest : public CommandTest {
 protected:
  // A session of these records, each in the context 1 and of the library unless it says otherwise.
  std::string Session(const std::vector<std::string>& records) {
    std::string text = R"({"orvane":1,"profile":"uhd","app":{"id":"aBcDe01234.App","name":"App",)"
                       R"("privileges":["http://tizen.org/privilege/tv.inputdevice"]},"records":[)";
    for (const std::string& record : records) {
      text += (text.back() == '[' ? "{" : ",{") +
              std::string(R"("context":1,"direction":"fromPage","peer":"dravelt.orvane",)") +
              record + "}";
    }
    return Write("session.json", text + "]}");
  }
};

constexpr char kVersion[] =
    R"("seq":5,"kind":"nativeSync","payload":"{\"cmd\":\"OrvaneManager_getVersion\",\"args\":{}}",)";
constexpr char kUuid[] =
    R"("kind":"nativeSync","payload":"{\"cmd\":\"OrvaneManager_getUuid\",\"args\":{}}",)";
constexpr char kProfile[] =
    R"("kind":"nativeSync","payload":"{\"cmd\":\"OrvaneManager_recordProfiling\",)"
    R"(\"args\":{\"label\":\"x\",\"callbackId\":5}}","reply":"{}")";
constexpr char kPosted[] = R"("kind":"nativePost","direction":"toPage",)"
                           R"("payload":"{\"status\":\"success\",\"result\":{},\"callbackId\":5}")";

constexpr char kRegister[] = R"("kind":"runtimeSync","peer":"tizen://api/inputdevice/registerKey",)"
                             R"("payload":"XF86Red","reply":"success")";
constexpr char kRecommend[] =
    R"("kind":"runtimePlain","peer":"dravelt://orvane/setIMERecommendedType",)"
    R"("payload":"1","reply":true)";
constexpr char kHint[] =
    R"("kind":"runtimeAsync","peer":"dravelt://orvane/setAuxHint","payload":"a,b",)"
    R"("reply":"{\"status\":\"success\"}")";
constexpr char kPrivilege[] =
    R"("kind":"privilege","peer":"http://tizen.org/privilege/tv.window","payload":null,)"
    R"("reply":false)";
constexpr char kMove[] = R"("kind":"widget","peer":"move","payload":[1,2],"reply":"success")";

TEST_F(ReplayTest, EndsWithNothingToSayWhenAllIsAsRecorded) {
  const std::string version =
      std::string(kVersion) + R"("reply":"{\"status\":\"success\", \"result\":\"3.9\"}")";
  const std::string file =
      Session({R"("kind":"create","payload":null,"reply":null)", version, kProfile, kPosted,
               kRegister, kRecommend, kHint, kMove, kPrivilege, R"("kind":"close")"});
  const Outcome outcome = Run({"replay", file});
  EXPECT_EQ(outcome.out, "10 messages replayed, 0 differences\n");
  EXPECT_EQ(outcome.exit_code, 0);
}

TEST_F(ReplayTest, PrintsAReplyThatIsAnotherOne) {
  const std::string file =
      Session({std::string(kVersion) + R"("reply":"{\"status\":\"success\",\"result\":\"3.8\"}")"});
  const Outcome outcome = Run({"replay", file});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("message 5: nativeSync dravelt.orvane {\"cmd\""));
  EXPECT_THAT(outcome.out, HasSubstr(R"(recorded: {"status":"success","result":"3.8"})"));
  EXPECT_THAT(outcome.out, HasSubstr(R"(replayed: {"result":"3.9","status":"success"})"));
  EXPECT_THAT(outcome.out, HasSubstr("1 message replayed, 1 difference\n"));
}

TEST_F(ReplayTest, PrintsDifferencesAsJson) {
  const std::string file =
      Session({std::string(kVersion) + R"("reply":"{\"status\":\"success\",\"result\":\"3.8\"}")"});
  const Outcome outcome = Run({"replay", "--json", file});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, testing::MatchesRegex("\\{\"differences\":\\[\\{.*\"seq\":5.*\\}\\],"
                                                 "\"messages\":1\\}\n"));
}

TEST_F(ReplayTest, PassesOverTheUuidUnlessItIsToBeStrict) {
  const std::string file =
      Session({std::string(kUuid) + R"("reply":"{\"status\":\"success\",\"result\":\"x\"}")"});
  EXPECT_EQ(Run({"replay", file}).exit_code, 0);
  EXPECT_EQ(Run({"replay", "--strict", file}).exit_code, 1);
}

TEST_F(ReplayTest, SendsACallBeforeWhatItLedTo) {
  const Outcome outcome = Run({"replay", "--timeout", "0.1",
                               Session({std::string(kPosted) + R"(,"time_ns":1.7e18)",
                                        std::string(kProfile) + R"(,"time_ns":1.6e18)"})});
  EXPECT_EQ(outcome.out, "2 messages replayed, 0 differences\n");
}

TEST_F(ReplayTest, NoticesAPostedMessageThatIsMissing) {
  const Outcome outcome = Run({"replay", "--timeout", "0.1", Session({kPosted})});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("replayed: nothing came"));
}

constexpr char kSecondProfile[] =
    R"("kind":"nativeSync","payload":"{\"cmd\":\"OrvaneManager_recordProfiling\",)"
    R"(\"args\":{\"label\":\"y\",\"callbackId\":6}}")";
constexpr char kSecondPosted[] =
    R"("kind":"nativePost","direction":"toPage",)"
    R"("payload":"{\"status\":\"success\",\"result\":{},\"callbackId\":6}")";

TEST_F(ReplayTest, NoticesAPostedMessageThatWasNotRecorded) {
  // The second answer comes after the first, of which the recording has none.
  const Outcome outcome = Run({"replay", Session({kProfile, kSecondProfile, kSecondPosted})});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("not recorded: nativePost dravelt.orvane"));
}

TEST_F(ReplayTest, ReportsTheMessageThatEndsTheLibrary) {
  const Outcome outcome = Run(
      {"replay", Session({R"("seq":9,"kind":"nativeSync",)"
                          R"("payload":"{\"cmd\":\"OrvaneManager_getAppState\",\"args\":{}}")"})});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("message 9"));
  EXPECT_THAT(outcome.out, HasSubstr("the set process ended while it handled sync "
                                     "dravelt.orvane"));
  EXPECT_THAT(outcome.out, HasSubstr(": it was killed by signal 6 (Aborted)\n"));
}

// Enough for a set to start on a busy machine.
constexpr char kDeadline[] = "5";

TEST_F(ReplayTest, GivesUpAMessageThatIsNotAnsweredInTime) {
  const std::string file = Session({R"("peer":"example.stuck","kind":"create")",
                                    R"("seq":3,"kind":"close")", std::string(kRegister)});
  const Outcome outcome =
      Run({"replay", "--extension", STUCK_EXTENSION, "--deadline", kDeadline, file});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("message 3: close"));
  EXPECT_THAT(outcome.out, HasSubstr("there was no answer within 5 s; the set process is busy with "
                                     "close\n"));
}

TEST_F(ReplayTest, GivesUpAnExtensionThatNeverStarts) {
  const Outcome outcome = Run({"replay", "--extension", HANGING_EXTENSION, "--deadline", kDeadline,
                               Session({std::string(kRegister)})});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("while it handled load " HANGING_EXTENSION));
}

TEST_F(ReplayTest, SendsAnyNumberOfMessagesThatWantNoAnswer) {
  const std::string post =
      R"("peer":"example.echo","kind":"nativePost","payload":")" + std::string(2000, 'x') + R"(")";
  const Outcome outcome = Run({"replay", "--extension", ECHO_EXTENSION, "--json",
                               Session(std::vector<std::string>(1000, post))});
  EXPECT_THAT(outcome.out, HasSubstr(R"("messages":1000)")) << outcome.err;
}

TEST_F(ReplayTest, FailsPlatformFunctionsOnDemand) {
  const std::string file = Session(
      {R"("kind":"nativeSync","payload":"{\"cmd\":\"OrvaneManager_requestTvContextTask\",)"
       R"(\"args\":{\"target\":0,\"action\":0}}","reply":"{\"status\":\"success\",\"result\":true}")"});
  EXPECT_EQ(Run({"replay", file}).exit_code, 0);
  EXPECT_EQ(Run({"replay", "--fail", "app_context_manager_request_task=-1", file}).exit_code, 1);
  EXPECT_EQ(Run({"replay", "--fail", "nonsense", file}).exit_code, 2);
}

TEST_F(ReplayTest, RefusesWhatIsNoSession) {
  EXPECT_EQ(Run({"replay", "no-such-file"}).exit_code, 2);
  for (const char* text : {"", "[]", "{}", R"({"orvane":2,"records":[]})", R"({"orvane":1})",
                           R"({"orvane":1,"records":[1]})"}) {
    const Outcome outcome = Run({"replay", "-"}, text);
    EXPECT_EQ(outcome.exit_code, 2) << text;
    EXPECT_THAT(outcome.err, HasSubstr("is no recorded session")) << text;
  }
  const Outcome outcome = Run({"replay", "-"}, R"({"orvane":1,"records":[]})");
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("does not name its application"));
}

TEST_F(ReplayTest, TakesNumbersThatAreNoneForNotGiven) {
  const Outcome outcome =
      Run({"replay", Session({R"("seq":1e300,"context":-1e300,"kind":"close","payload":)"
                              R"("{\"args\":{\"callbackId\":1e300}}")"})});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.out;
}

TEST_F(ReplayTest, NamesAKindThatItDoesNotKnow) {
  const Outcome outcome = Run({"replay", Session({R"("kind":"telepathy")"})});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("knows no such kind"));
}

TEST_F(ReplayTest, LeavesNothingInTheStateFolder) {
  Run({"replay", Session({kProfile})});
  EXPECT_FALSE(std::filesystem::exists(state()));
}

}  // namespace
}  // namespace orvane::cli
