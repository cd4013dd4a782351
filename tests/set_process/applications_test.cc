// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

constexpr char kTour[] = "OrvaneTour.Tour";

class ApplicationsTest : public SetProcessTest {
 protected:
  ApplicationsTest() { Start(); }
  void InstallTour() { Control("applications.install", R"({"folder":")" EXAMPLES R"(/tour"})"); }
  Json App(const std::string& id) {
    const Json applications = State("applications");
    for (const Json& app : applications) {
      if (app.at("id").get<std::string>() == id) return app;
    }
    return {};
  }
};

TEST_F(ApplicationsTest, InstallsAFolderWithWhatItsConfigSays) {
  InstallTour();
  const Json tour = App(kTour);
  EXPECT_EQ(tour.at("name"), "Orvane tour");
  EXPECT_FALSE(tour.at("running").get<bool>());
  EXPECT_TRUE(tour.at("state").is_null());
  EXPECT_FALSE(tour.at("privileges").empty());
}

TEST_F(ApplicationsTest, LaunchesOneInFrontOfTheOther) {
  InstallTour();
  Control("applications.launch", R"({"id":"OrvaneTour.Tour"})");
  EXPECT_EQ(State("focused"), kTour);
  EXPECT_EQ(App(kTour).at("stateName"), "FOREGROUND");
  EXPECT_TRUE(App(kTour).at("pid").is_null());
  EXPECT_EQ(App(kApp).at("stateName"), "BACKGROUND");
  EXPECT_EQ(Orvane(7, "getForegroundAppId").at("result"), kTour);
  Control("applications.terminate", R"({"id":"OrvaneTour.Tour"})");
  EXPECT_FALSE(App(kTour).at("running").get<bool>());
}

TEST_F(ApplicationsTest, GivesTheFocusAndTakesIt) {
  Control("applications.focus", R"({"id":""})");
  EXPECT_EQ(State("focused"), "");
  Control("applications.focus", R"({"id":"aBcDe01234.App"})");
  EXPECT_EQ(State("focused"), kApp);
  WaitForEvent("focus", [](const Json& data) { return data.get<std::string>() == kApp; });
}

TEST_F(ApplicationsTest, TakesAStateByNameAndByNumber) {
  Control("applications.setState", R"({"id":"aBcDe01234.App","state":"SERVICE"})");
  EXPECT_EQ(App(kApp).at("stateName"), "SERVICE");
  EXPECT_EQ(Orvane(7, "getAppState", R"({"appid":""})").at("result"), "SERVICE");
  Control("applications.setState", R"({"id":"aBcDe01234.App","state":2})");
  EXPECT_EQ(App(kApp).at("stateName"), "BACKGROUND");
}

TEST_F(ApplicationsTest, KnowsItselfAfterBeingLaunchedAgain) {
  Control("applications.terminate", R"({"id":"aBcDe01234.App"})");
  Control("applications.launch", R"({"id":"aBcDe01234.App"})");
  EXPECT_EQ(App(kApp).at("pid"), pid());
  EXPECT_EQ(Orvane(7, "getAppState", R"({"appid":""})").at("result"), "FOREGROUND");
}

TEST_F(ApplicationsTest, RefusesWhatIsNoneWithARemedy) {
  EXPECT_THAT(ControlError("applications.launch", R"({"id":"no.such"})"), HasSubstr("install it"));
  EXPECT_THAT(ControlError("applications.setState", R"({"id":"aBcDe01234.App","state":"ASLEEP"})"),
              HasSubstr("FOREGROUND"));
  EXPECT_THAT(ControlError("applications.setState", R"({"id":"aBcDe01234.App","state":9})"),
              HasSubstr("0 to 7"));
  EXPECT_THAT(ControlError("applications.install", R"({"folder":"/no/such"})"),
              HasSubstr("/no/such"));
  EXPECT_THAT(ControlError("applications.launch", R"({})"), HasSubstr("\"id\""));
}

}  // namespace
}  // namespace orvane::television
