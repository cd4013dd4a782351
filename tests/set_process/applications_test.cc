// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using picojson::array;
using picojson::value;
using testing::HasSubstr;

constexpr char kTour[] = "OrvaneTour.Tour";

class ApplicationsTest : public SetProcessTest {
 protected:
  ApplicationsTest() { Start(); }
  void InstallTour() { Control("applications.install", R"({"folder":")" EXAMPLES R"(/tour"})"); }
  value App(const std::string& id) {
    const value applications = State("applications");
    for (const value& app : applications.get<array>()) {
      if (app.get("id").to_str() == id) return app;
    }
    return {};
  }
};

TEST_F(ApplicationsTest, InstallsAFolderWithWhatItsConfigSays) {
  InstallTour();
  const value tour = App(kTour);
  EXPECT_EQ(tour.get("name").to_str(), "Orvane tour");
  EXPECT_FALSE(tour.get("running").get<bool>());
  EXPECT_TRUE(tour.get("state").is<picojson::null>());
  EXPECT_FALSE(tour.get("privileges").get<array>().empty());
}

TEST_F(ApplicationsTest, LaunchesOneInFrontOfTheOther) {
  InstallTour();
  Control("applications.launch", R"({"id":"OrvaneTour.Tour"})");
  EXPECT_EQ(State("focused").to_str(), kTour);
  EXPECT_EQ(App(kTour).get("stateName").to_str(), "FOREGROUND");
  EXPECT_TRUE(App(kTour).get("pid").is<picojson::null>());
  EXPECT_EQ(App(kApp).get("stateName").to_str(), "BACKGROUND");
  EXPECT_EQ(Orvane(7, "getForegroundAppId").get("result").to_str(), kTour);
  Control("applications.terminate", R"({"id":"OrvaneTour.Tour"})");
  EXPECT_FALSE(App(kTour).get("running").get<bool>());
}

TEST_F(ApplicationsTest, GivesTheFocusAndTakesIt) {
  Control("applications.focus", R"({"id":""})");
  EXPECT_EQ(State("focused").to_str(), "");
  Control("applications.focus", R"({"id":"aBcDe01234.App"})");
  EXPECT_EQ(State("focused").to_str(), kApp);
  WaitForEvent("focus", [](const value& data) { return data.to_str() == kApp; });
}

TEST_F(ApplicationsTest, TakesAStateByNameAndByNumber) {
  Control("applications.setState", R"({"id":"aBcDe01234.App","state":"SERVICE"})");
  EXPECT_EQ(App(kApp).get("stateName").to_str(), "SERVICE");
  EXPECT_EQ(Orvane(7, "getAppState", R"({"appid":""})").get("result").to_str(), "SERVICE");
  Control("applications.setState", R"({"id":"aBcDe01234.App","state":2})");
  EXPECT_EQ(App(kApp).get("stateName").to_str(), "BACKGROUND");
}

TEST_F(ApplicationsTest, KnowsItselfAfterBeingLaunchedAgain) {
  Control("applications.terminate", R"({"id":"aBcDe01234.App"})");
  Control("applications.launch", R"({"id":"aBcDe01234.App"})");
  EXPECT_EQ(App(kApp).get("pid").get<double>(), pid());
  EXPECT_EQ(Orvane(7, "getAppState", R"({"appid":""})").get("result").to_str(), "FOREGROUND");
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
