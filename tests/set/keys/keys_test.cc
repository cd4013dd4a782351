// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/keys.h"

#include <set>
#include <string>
#include <vector>

#include <VirtualKey.h>
#include <app_context.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kPlayer[] = "ab12cd34ef.Player";
constexpr char kGuide[] = "gh56ij78kl.Guide";
constexpr char kRed[] = "XF86Red";

class KeysTest : public SetTest {
 protected:
  static KeyGrabs& grabs() { return set().key_grabs(); }

  // One that may register keys.
  static void Launch(const std::string& id) {
    Application application = SetTest::Install(id);
    application.privileges = {kKeyPrivilege};
    set().applications().Install(application);
    set().applications().Launch(id, getpid());
  }

  static void ExpectRoute(const std::string& key, const std::string& app, KeyRoute reason) {
    const KeyDelivery delivery = grabs().Route(key);
    EXPECT_EQ(delivery.app, app) << delivery.text;
    EXPECT_EQ(delivery.reason, reason) << delivery.text;
    EXPECT_EQ(delivery.delivered, !app.empty()) << delivery.text;
    EXPECT_EQ(delivery.key_name, key);
    EXPECT_NE(delivery.text.find(key), std::string::npos) << delivery.text;
  }
};

// Keeps what was delivered.
class Deliveries : public Observer {
 public:
  Deliveries() { Set::Instance().events().Add(this); }
  ~Deliveries() override { Set::Instance().events().Remove(this); }
  void OnKeyInjected(const InjectedKey& key) override { injected.push_back(key); }
  void OnKeyDelivered(const KeyDelivery& delivery) override { delivered.push_back(delivery); }

  std::vector<InjectedKey> injected;
  std::vector<KeyDelivery> delivered;
};

TEST_F(KeysTest, TableHasNoSymbolTwice) {
  std::set<std::string> names;
  for (const RemoteKey& key : RemoteKeys()) {
    EXPECT_TRUE(names.insert(key.name).second) << key.name;
    EXPECT_GT(key.key_code, 0) << key.name;
  }
  EXPECT_EQ(names.size(), 119u);
}

TEST_F(KeysTest, TableKnowsCodesOfBothKinds) {
  EXPECT_EQ(grabs().FindKey("XF86AudioRewind")->key_code, 412);
  EXPECT_EQ(grabs().FindKey("XF86AudioRewind")->x_key_code, 176);
  EXPECT_EQ(grabs().FindKeyByHardwareCode(76)->name, "XF86AudioRaiseVolume");
  EXPECT_FALSE(grabs().FindKeyByHardwareCode(0));
}

TEST_F(KeysTest, MandatoryKeysAreSix) {
  for (const char* key : {"Left", "Up", "Right", "Down", "Return", "XF86Back"}) {
    EXPECT_TRUE(IsMandatoryKey(key)) << key;
  }
  EXPECT_FALSE(IsMandatoryKey(kRed));
}

TEST_F(KeysTest, MandatoryKeyReachesTheFocusedApplication) {
  Launch(kPlayer);
  ExpectRoute("XF86Back", kPlayer, KeyRoute::kMandatory);
  EXPECT_EQ(grabs().Route("XF86Back").key_code, 10009);
}

TEST_F(KeysTest, MandatoryKeyReachesTheFocusedApplicationInSpiteOfGrabs) {
  Launch(kPlayer);
  Launch(kGuide);
  grabs().Grab(kPlayer, "Return", GrabMode::kRegistered);
  ExpectRoute("Return", kGuide, KeyRoute::kMandatory);
}

TEST_F(KeysTest, WithoutFocusAMandatoryKeyReachesNobody) {
  ExpectRoute("Left", "", KeyRoute::kNoFocus);
}

TEST_F(KeysTest, KeyOfAnApplicationThatMayNotRegisterItLacksThePrivilege) {
  SetTest::Launch(kPlayer);
  ExpectRoute(kRed, "", KeyRoute::kNoPrivilege);
  EXPECT_EQ(grabs().Route(kRed).text,
            std::string(kRed) + " reaches nobody: " + kPlayer +
                " lacks the privilege to register keys. Add <tizen:privilege name=\"" +
                kKeyPrivilege + "\"/> to its config.xml");
}

TEST_F(KeysTest, OtherKeyNeedsRegistration) {
  Launch(kPlayer);
  ExpectRoute(kRed, "", KeyRoute::kNotRegistered);
  EXPECT_EQ(grabs().Grab(kPlayer, kRed, GrabMode::kNormal), GrabResult::kDone);
  ExpectRoute(kRed, kPlayer, KeyRoute::kRegistered);
  EXPECT_EQ(grabs().Ungrab(kPlayer, kRed), GrabResult::kDone);
  ExpectRoute(kRed, "", KeyRoute::kNotRegistered);
}

TEST_F(KeysTest, KeyThatNobodyRegisteredIsSaidToBeSo) {
  EXPECT_EQ(
      grabs().Route(kRed).text,
      std::string(kRed) + " reaches nobody: no application has registered it with registerKey");
  Launch(kPlayer);
  EXPECT_EQ(grabs().Route(kRed).text, std::string(kRed) + " reaches nobody: " + kPlayer +
                                          " has not registered it with registerKey");
}

TEST_F(KeysTest, RegistrationCountsWithTheFocusOnly) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, kRed, GrabMode::kNormal);
  Launch(kGuide);
  ExpectRoute(kRed, "", KeyRoute::kGrabbedByOther);
  set().applications().SetFocus(kPlayer);
  ExpectRoute(kRed, kPlayer, KeyRoute::kRegistered);
}

TEST_F(KeysTest, TopmostGrabWinsWhileItsWindowIsTopmost) {
  Launch(kPlayer);
  Launch(kGuide);
  set().applications().SetState(kPlayer, APP_STATE_FOREGROUND);
  grabs().Grab(kGuide, kRed, GrabMode::kTopmost);
  set().applications().ClearFocus();
  ExpectRoute(kRed, kGuide, KeyRoute::kSpecialGrab);
  set().windows().SetStackMode(kPlayer, StackMode::kAbove);
  ExpectRoute(kRed, "", KeyRoute::kGrabbedByOther);
}

TEST_F(KeysTest, TopmostGrabOfABackgroundApplicationRests) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, kRed, GrabMode::kTopmost);
  set().applications().SetState(kPlayer, APP_STATE_BACKGROUND);
  ExpectRoute(kRed, "", KeyRoute::kGrabbedByOther);
}

TEST_F(KeysTest, RegisteredGrabReachesItsApplicationWhereverTheFocusIs) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, kRed, GrabMode::kRegistered);
  Launch(kGuide);
  grabs().Grab(kGuide, kRed, GrabMode::kNormal);
  ExpectRoute(kRed, kPlayer, KeyRoute::kSpecialGrab);
}

TEST_F(KeysTest, OfSeveralRegisteredGrabsTheHigherWindowWins) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, kRed, GrabMode::kRegistered);
  Launch(kGuide);
  grabs().Grab(kGuide, kRed, GrabMode::kRegistered);
  ExpectRoute(kRed, kGuide, KeyRoute::kSpecialGrab);
  set().applications().SetFocus(kPlayer);
  ExpectRoute(kRed, kPlayer, KeyRoute::kSpecialGrab);
}

TEST_F(KeysTest, TopmostGrabComesBeforeARegisteredOne) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, kRed, GrabMode::kRegistered);
  Launch(kGuide);
  grabs().Grab(kGuide, kRed, GrabMode::kTopmost);
  ExpectRoute(kRed, kGuide, KeyRoute::kSpecialGrab);
}

TEST_F(KeysTest, SecondGrabOfAKeyReplacesTheFirst) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, kRed, GrabMode::kNormal);
  grabs().Grab(kPlayer, kRed, GrabMode::kTopmost);
  ASSERT_EQ(grabs().list(kPlayer).size(), 1u);
  EXPECT_EQ(grabs().list(kPlayer)[0].mode, GrabMode::kTopmost);
}

TEST_F(KeysTest, GrabRefusesUnknownKeysAndStoppedApplications) {
  Install(kPlayer);
  EXPECT_EQ(grabs().Grab(kPlayer, kRed, GrabMode::kNormal), GrabResult::kNotRunning);
  Launch(kPlayer);
  EXPECT_EQ(grabs().Grab(kPlayer, "Red", GrabMode::kNormal), GrabResult::kUnknownKey);
  EXPECT_EQ(grabs().Ungrab(kPlayer, "Red"), GrabResult::kUnknownKey);
  EXPECT_EQ(grabs().Ungrab(kPlayer, kRed), GrabResult::kNotGrabbed);
}

TEST_F(KeysTest, TerminationReleasesTheGrabs) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, kRed, GrabMode::kRegistered);
  set().applications().Terminate(kPlayer);
  EXPECT_TRUE(grabs().list().empty());
  ExpectRoute(kRed, "", KeyRoute::kNotRegistered);
}

TEST_F(KeysTest, FurtherKeysOfTheDeviceAreKnownUntilTheRestart) {
  Launch(kPlayer);
  EXPECT_EQ(grabs().Grab(kPlayer, "XF86Device1", GrabMode::kNormal), GrabResult::kUnknownKey);
  grabs().AddKnownKeys(std::vector<std::string>{"XF86Device1", kRed});
  grabs().AddKnownKeys(std::vector<RemoteKey>{{"XF86Device1", 10700, 700}});
  EXPECT_EQ(grabs().Grab(kPlayer, "XF86Device1", GrabMode::kNormal), GrabResult::kDone);
  EXPECT_EQ(grabs().Route("XF86Device1").key_code, 10700);
  EXPECT_EQ(grabs().FindKeyByHardwareCode(700)->name, "XF86Device1");
  EXPECT_EQ(grabs().FindKey(kRed)->key_code, 403);
  EXPECT_EQ(grabs().known_keys().size(), RemoteKeys().size() + 1);
  StartSet();
  EXPECT_FALSE(grabs().IsKnownKey("XF86Device1"));
}

TEST_F(KeysTest, PressTellsWhereTheKeyWent) {
  Launch(kPlayer);
  Deliveries deliveries;
  grabs().Press("Left");
  grabs().Press(kRed);
  ASSERT_EQ(deliveries.delivered.size(), 2u);
  EXPECT_EQ(deliveries.delivered[0].app, kPlayer);
  EXPECT_EQ(deliveries.delivered[0].key_code, 37);
  EXPECT_FALSE(deliveries.delivered[1].delivered);
}

TEST_F(KeysTest, InjectedKeyTakesTheWayOfTheRemoteControl) {
  Launch(kPlayer);
  grabs().Grab(kPlayer, "XF86AudioRaiseVolume", GrabMode::kNormal);
  Deliveries deliveries;
  EXPECT_EQ(VirtualKey_Initialize(0), 0);
  EXPECT_EQ(VirtualKey_Send_KeyCode(76, 2), 0);
  ASSERT_EQ(deliveries.injected.size(), 1u);
  EXPECT_EQ(deliveries.injected[0].key_code, 76);
  EXPECT_EQ(deliveries.injected[0].mode, 2);
  EXPECT_EQ(deliveries.injected[0].key_name, "XF86AudioRaiseVolume");
  ASSERT_EQ(deliveries.delivered.size(), 1u);
  EXPECT_EQ(deliveries.delivered[0].app, kPlayer);
  EXPECT_EQ(deliveries.delivered[0].key_code, 447);
  EXPECT_EQ(deliveries.delivered[0].press.source, KeyPress::Source::kComponent);
}

TEST_F(KeysTest, DeliveryTellsHowTheKeyWasPressed) {
  Launch(kPlayer);
  Deliveries deliveries;
  KeyPress press;
  press.is_native = true;
  press.held = "XF86Back";
  grabs().Press("XF86Exit", press);
  grabs().Press("Left");
  ASSERT_EQ(deliveries.delivered.size(), 2u);
  EXPECT_EQ(deliveries.delivered[0].press.held, "XF86Back");
  EXPECT_TRUE(deliveries.delivered[0].press.is_native);
  EXPECT_EQ(deliveries.delivered[0].text.find("XF86Back held down is XF86Exit: "), 0u);
  EXPECT_GT(deliveries.delivered[0].time_ns, 0);
  EXPECT_EQ(deliveries.delivered[1].press.held, "");
  EXPECT_EQ(deliveries.delivered[1].press.source, KeyPress::Source::kPerson);
}

TEST_F(KeysTest, UnknownHardwareCodeIsInjectedAndReachesNobody) {
  Launch(kPlayer);
  VirtualKey_Initialize(0);
  Deliveries deliveries;
  EXPECT_EQ(VirtualKey_Send_KeyCode(-5, 2), 0);
  EXPECT_EQ(VirtualKey_Send_KeyCode(0, 2), 0);
  EXPECT_EQ(set().keys().injected().size(), 2u);
  EXPECT_EQ(set().keys().injected()[0].key_code, -5);
  EXPECT_EQ(set().keys().injected()[0].key_name, "");
  EXPECT_TRUE(deliveries.delivered.empty());
}

TEST_F(KeysTest, InjectionNeedsInitialisationAndTheKnownMode) {
  EXPECT_NE(VirtualKey_Send_KeyCode(76, 2), 0);
  VirtualKey_Initialize(0);
  EXPECT_NE(VirtualKey_Send_KeyCode(76, 1), 0);
  EXPECT_TRUE(set().keys().injected().empty());
}

TEST_F(KeysTest, NewestInjectedKeysAreKept) {
  VirtualKey_Initialize(0);
  for (int i = 0; i < 1010; ++i) VirtualKey_Send_KeyCode(10'000 + i, 2);
  const std::vector<InjectedKey> injected = set().keys().injected();
  ASSERT_EQ(injected.size(), KeyInjector::kMaxRecorded);
  EXPECT_EQ(injected.front().key_code, 10'010);
  EXPECT_EQ(injected.back().key_code, 11'009);
}

}  // namespace
}  // namespace tvset::testing
