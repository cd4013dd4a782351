// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/television.h"

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "television/control.h"
#include "television/request_error.h"

namespace orvane::television {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr char kApp[] = "aBcDe01234.App";

class TelevisionTest : public ::testing::Test, public TelevisionListener {
 protected:
  TelevisionTest() {
    std::string name = (fs::temp_directory_path() / "orvane-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp " + name);
    folder_ = name;
    options_.state_folder = (folder_ / "state").string();
    options_.app.id = kApp;
    options_.app.package = "aBcDe01234";
    options_.app.metadata = {{"a key", "a value"}};
    options_.app.version = "1.2.0";
    shipped_.extension = ORVANE_EXTENSION;
  }
  ~TelevisionTest() override {
    television_.reset();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  Television& Start(const Json& snapshot = Json()) {
    television_.reset();
    return television_.emplace(options_, shipped_, snapshot,
                               static_cast<TelevisionListener&>(*this));
  }
  Json State(const std::string& part) { return television_->state().All()[part]; }

  // The result of a control method.
  static Json Call(Control& control, const std::string& method, const char* parameters = "{}") {
    Json answer;
    control.Call(method, base::ParseJson(parameters),
                 [&](const Json& result, const std::string& error) {
                   EXPECT_EQ(error, "");
                   answer = result;
                 });
    return answer;
  }
  static std::string ErrorOf(Control& control, const std::string& method, const Json& parameters) {
    try {
      control.Call(method, parameters, [](const Json&, const std::string&) { FAIL(); });
    } catch (const std::exception& error) {
      return error.what();
    }
    return "";
  }

  void OnExplanation(const std::string& text) override { explanations_.push_back(text); }
  void OnWarning(const std::string& text) override { warnings_.push_back(text); }
  void OnLoading(const std::string& name) override { loaded_.push_back(name); }
  void OnTouched(Part part) override { touched_.push_back(part); }

  fs::path folder_;
  TelevisionOptions options_;
  ShippedParts shipped_;
  std::optional<Television> television_;
  std::vector<std::string> explanations_;
  std::vector<std::string> warnings_;
  std::vector<std::string> loaded_;
  std::vector<Part> touched_;
};

TEST_F(TelevisionTest, RunsItsApplicationInFrontFromConstructionToDestruction) {
  Start();
  EXPECT_EQ(television_->set().applications().focused(), kApp);
  EXPECT_EQ(television_->set().applications().Running(kApp)->pid, getpid());
  EXPECT_EQ(State("applications")[0]["version"], "1.2.0");
  EXPECT_EQ(State("applications")[0]["metadata"], Json::parse(R"([["a key","a value"]])"));
  television_.reset();
  EXPECT_FALSE(tvset::Set::running());
}

TEST_F(TelevisionTest, NamesWhatItLoads) {
  Start().LoadExtensions();
  EXPECT_THAT(loaded_, ElementsAre(ORVANE_EXTENSION));
  EXPECT_EQ(television_->Catalogue()[0]["name"], "dravelt.orvane");
  EXPECT_THAT(television_->Scripts()["dravelt.orvane"].get<std::string>(), HasSubstr("getVersion"));
  EXPECT_THAT(loaded_, ElementsAre(ORVANE_EXTENSION, "dravelt.orvane"));
}

TEST_F(TelevisionTest, PrefersTheGivenLibraryToItsOwn) {
  options_.extensions = {ORVANE_EXTENSION};
  shipped_.extension = "/no/such/library.so";
  Start().LoadExtensions();
  EXPECT_THAT(loaded_, ElementsAre(ORVANE_EXTENSION));
}

TEST_F(TelevisionTest, SaysWhatToDoWhereTheLibraryIsMissing) {
  shipped_.extension.clear();
  Start();
  try {
    television_->LoadExtensions();
    FAIL();
  } catch (const RequestError& error) {
    EXPECT_THAT(error.what(), HasSubstr("liborvane.so is not where it belongs"));
    EXPECT_THAT(error.what(), HasSubstr("--extension"));
  }
}

TEST_F(TelevisionTest, RunsNoSetWhereAFaultIsNone) {
  options_.faults = {"vconf_set_str"};
  EXPECT_THROW(Start(), RequestError);
  EXPECT_FALSE(tvset::Set::running());
}

TEST_F(TelevisionTest, ExplainsWhatTheWebRuntimeRefuses) {
  Start();
  EXPECT_EQ(television_->services().SendSync("tizen://api/inputdevice/registerKey", "XF86Red"),
            "error");
  ASSERT_EQ(explanations_.size(), 1U);
  EXPECT_THAT(explanations_[0], HasSubstr("<tizen:privilege name="));
}

TEST_F(TelevisionTest, TellsTheRowOfAKeyAlone) {
  options_.faults = {"vconf_set_str=-3:once"};
  Start();
  const SetState& state = television_->state();
  television_->set().settings().SetString("db/a", "x");
  EXPECT_EQ(state.RowOf(Part::kFaults, "vconf_set_str"), State("faults")[0]);
  EXPECT_EQ(state.RowOf(Part::kApplications, kApp), State("applications")[0]);
  EXPECT_EQ(state.RowOf(Part::kSettings, "db/a"), State("settings")[0]);
  EXPECT_TRUE(state.RowOf(Part::kFaults, "dlog_print").is_null());
  EXPECT_TRUE(state.RowOf(Part::kSettings, "db/b").is_null());
}

TEST_F(TelevisionTest, GoesOnFromASnapshotAsText) {
  options_.faults = {"vconf_set_str=-3"};
  options_.app.privileges = {tvset::kKeyPrivilege};
  Start();
  television_->services().SendSync("tizen://api/inputdevice/registerKey", "XF86Red");
  television_->services().MoveWindow(3, 4);
  television_->clock().Advance(std::chrono::seconds(2));
  Json before = television_->TakeSnapshot();
  options_.faults.clear();
  Start(base::ParseJson(base::JsonText(before)));
  Json after = television_->TakeSnapshot();
  EXPECT_THAT(television_->warnings(), IsEmpty());
  EXPECT_NEAR(before["screenSaver"]["sinceMs"].get<double>(),
              after["screenSaver"]["sinceMs"].get<double>(), 1);
  before.erase("screenSaver");
  after.erase("screenSaver");
  EXPECT_EQ(before, after);
}

TEST_F(TelevisionTest, PassesOverTheDamagedPartsOfASnapshot) {
  Start();
  Json snapshot = television_->TakeSnapshot();
  snapshot["features"] = 7;
  snapshot["screenSaver"]["clockShiftMs"] = -1;
  snapshot["focused"] = "";
  Start(snapshot);
  EXPECT_EQ(television_->warnings().size(), 2U);
  EXPECT_EQ(television_->set().applications().focused(), "");
}

class ControlTest : public TelevisionTest {
 protected:
  ControlTest() {
    Start().LoadExtensions();
    control_.emplace(*television_);
  }

  std::optional<Control> control_;
};

TEST_F(ControlTest, SuggestsTheParameterThatWasMeant) {
  EXPECT_EQ(ErrorOf(*control_, "keys.press", {{"name", "Left"}, {"lon", true}}),
            R"(There is no "lon" among the parameters of keys.press; there is "name", "long" and )"
            R"("native". Did you mean "long"?)");
}

TEST_F(ControlTest, SuggestsTheMethodThatWasMeant) {
  EXPECT_THAT(ErrorOf(*control_, "key.press", {}), HasSubstr("Did you mean \"keys.press\"?"));
}

TEST_F(ControlTest, RefusesParametersThatAreNoObject) {
  EXPECT_THAT(ErrorOf(*control_, "state.get", Json::array()), HasSubstr("in braces"));
  EXPECT_TRUE(Call(*control_, "state.get", "null").is_object());
}

TEST_F(ControlTest, KeepsWholeNumbersOfSettingsWhole) {
  const auto row = [&] { return television_->state().RowOf(Part::kSettings, "db/a"); };
  Call(*control_, "settings.set", R"({"key":"db/a","type":"double","value":7})");
  EXPECT_EQ(base::JsonText(row()), R"({"key":"db/a","type":"double","value":7})");
  Call(*control_, "settings.set", R"({"key":"db/a","value":-2147483648})");
  EXPECT_EQ(row()["type"], "int");
  Call(*control_, "settings.set", R"({"key":"db/a","value":2147483648})");
  EXPECT_EQ(row()["type"], "double");
}

TEST_F(ControlTest, TellsWhatTheSetsObserversDoNotHear) {
  Call(*control_, "clock.advance", R"({"ms":5})");
  EXPECT_THAT(touched_, ElementsAre(Part::kScreenSaver));
}

}  // namespace
}  // namespace orvane::television
