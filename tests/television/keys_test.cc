// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "services_fixture.h"

namespace orvane::television {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr char kRegister[] = "tizen://api/inputdevice/registerKey";
constexpr char kUnregister[] = "tizen://api/inputdevice/unregisterKey";
constexpr char kRegisterSpecially[] = "dravelt://orvane/RegisterKeyInSpecialMode";

class KeysTest : public ServicesFixture {
 protected:
  tvset::KeyDelivery Route(const std::string& key) { return set().key_grabs().Route(key); }
};

TEST_F(KeysTest, ARegisteredKeyReachesThePage) {
  EXPECT_FALSE(Route("XF86Red").delivered);

  ExpectDone(kRegister, "XF86Red");

  EXPECT_TRUE(Route("XF86Red").delivered);
  EXPECT_EQ(Route("XF86Red").app, kApp);
}

TEST_F(KeysTest, AnUnregisteredKeyNoLongerReachesThePage) {
  ExpectDone(kRegister, "XF86Red");
  ExpectDone(kUnregister, "XF86Red");
  EXPECT_FALSE(Route("XF86Red").delivered);
}

TEST_F(KeysTest, RegistersAMandatoryKey) { ExpectDone(kRegister, "XF86Back"); }

TEST_F(KeysTest, UnregisteringAKeyThatWasNotRegisteredSucceeds) {
  ExpectDone(kUnregister, "XF86Blue");
  ExpectDone(kUnregister, "XF86Back");
  EXPECT_TRUE(Route("XF86Back").delivered);
}

TEST_F(KeysTest, RefusesAnUnknownKey) {
  ExpectRefused(kRegister, "XF86Nonsense",
                "no key of the remote control is called \"XF86Nonsense\"");
  ExpectRefused(kUnregister, "XF86Nonsense", "\"XF86Nonsense\"");
  ExpectRefused(kRegister, "", "called \"\"");
}

TEST_F(KeysTest, SaysWhichLineIsMissingWhenThePrivilegeIs) {
  Install(kApp, {});
  const std::string line = "<tizen:privilege name=\"http://tizen.org/privilege/tv.inputdevice\"/>";
  ExpectRefused(kRegister, "XF86Red", line);
  ExpectRefused(kUnregister, "XF86Red", line);
  ExpectRefused(kRegisterSpecially, "XF86Red,2", line);
  EXPECT_THAT(set().key_grabs().list(), IsEmpty());
}

TEST_F(KeysTest, RefusesAnApplicationThatDoesNotRun) {
  set().applications().Terminate(kApp);
  ExpectRefused(kRegister, "XF86Red", "aBcDe01234.Player does not run");
}

TEST_F(KeysTest, ARegisteredSpecialGrabReceivesTheKeyWithoutTheFocus) {
  ExpectDone(kRegisterSpecially, "XF86Red,5");
  set().applications().SetFocus(kOtherApp);
  EXPECT_EQ(Route("XF86Red").app, kApp);
  EXPECT_EQ(Route("XF86Red").reason, tvset::KeyRoute::kSpecialGrab);
}

TEST_F(KeysTest, ATopmostSpecialGrabEndsWhenAnotherWindowIsTopmost) {
  ExpectDone(kRegisterSpecially, "XF86Red,2");
  EXPECT_EQ(Route("XF86Red").app, kApp);
  set().applications().SetFocus(kOtherApp);
  EXPECT_NE(Route("XF86Red").app, kApp);
}

TEST_F(KeysTest, RefusesMalformedSpecialGrabs) {
  for (const char* text : {"XF86Red", "XF86Red,", "XF86Red,0", "XF86Red,3", "XF86Red,2 ",
                           "XF86Red,2.0", "XF86Red,99999999999999999999", ",", ""}) {
    ExpectRefused(kRegisterSpecially, text, "grab mode");
  }
  ExpectRefused(kRegisterSpecially, ",2", "no key of the remote control");
  ExpectRefused(kRegisterSpecially, "XF86Red,5,2", "no key of the remote control");
}

TEST_F(KeysTest, RefusesAnUnknownMessage) {
  ExpectRefused("tizen://api/inputdevice/registerkey", "XF86Red", "knows no message");
  ExpectRefused("", "", "knows no message");
}

TEST_F(KeysTest, RefusesAHugeMessage) {
  ExpectRefused(kRegister, std::string(100 * 1024, 'x'), "longer than 65536 bytes");
}

TEST_F(KeysTest, ExplainsInOneShortLineWhateverThePageSends) {
  ExpectRefused(kRegister, "a\nb\x1b[2J" + std::string(1000, 'x'), "\"a?b?[2Jxx");
  EXPECT_LT(explanations_[0].size(), 300U);
}

TEST_F(KeysTest, PlainMessagesAnswerWhetherTheyWereDone) {
  EXPECT_TRUE(services_.Send(kRegister, "XF86Red"));
  EXPECT_FALSE(services_.Send(kRegister, "XF86Nonsense"));
}

TEST_F(KeysTest, AsynchronousMessagesAnswerWithReplies) {
  std::string answer;
  services_.SendAsync(kRegister, "XF86Red", [&](const std::string& text) { answer = text; });
  EXPECT_EQ(answer, R"({"status":"success"})");

  services_.SendAsync(kRegister, "a\"b", [&](const std::string& text) { answer = text; });
  EXPECT_THAT(answer, HasSubstr(R"("status":"error")"));
  EXPECT_THAT(answer, HasSubstr(R"("code":9999)"));
  EXPECT_THAT(answer, HasSubstr(R"(\"a\"b\")"));
}

TEST_F(KeysTest, KnowsThePrivilegesOfTheApplication) {
  EXPECT_TRUE(services_.HasPrivilege(kKeyPrivilege));
  EXPECT_THAT(explanations_, IsEmpty());
  EXPECT_FALSE(services_.HasPrivilege("http://tizen.org/privilege/internet"));
  ASSERT_EQ(explanations_.size(), 1U);
  EXPECT_THAT(explanations_[0],
              HasSubstr("<tizen:privilege name=\"http://tizen.org/privilege/internet\"/>"));
}

TEST_F(KeysTest, AnApplicationThatIsNotInstalledHoldsNothing) {
  RuntimeServices stranger(set(), "nObOdY1234.None", nullptr);
  EXPECT_FALSE(stranger.HasPrivilege(kKeyPrivilege));
  EXPECT_EQ(stranger.SendSync(kRegister, "XF86Red"), "error");
}

TEST_F(KeysTest, WorksWithoutAnExplainer) {
  RuntimeServices silent(set(), kApp, nullptr);
  EXPECT_EQ(silent.SendSync(kRegister, "XF86Nonsense"), "error");
}

}  // namespace
}  // namespace orvane::television
