// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <stdlib.h>
#include <unistd.h>

#include <memory>
#include <optional>

#include "app_manager.h"
#include "orvane/AppUtil.h"
#include "set_fixture.h"
#include "system_fakes.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AppUtilTest : public SetFixture {
 protected:
  using Getter = bool (*)(char**);

  // The id that the getter gives, freed as its caller does.
  static std::optional<std::string> Get(Getter getter) {
    char* id = nullptr;
    if (!getter(&id)) {
      EXPECT_EQ(id, nullptr);
      return std::nullopt;
    }
    std::string result(id);
    free(id);
    return result;
  }

  void RunAs(const std::string& id) {
    tvset::Application application;
    application.id = id;
    application.package = "other";
    set().applications().Install(application);
    set().applications().Launch(id, getpid());
  }

  SystemFakes system_;
};

TEST_F(AppUtilTest, GetAppIdCutsTheIdAtItsFirstDot) {
  EXPECT_EQ(Get(AppUtil::GetAppID), kPackage);
  RunAs("one.two.three");
  EXPECT_EQ(Get(AppUtil::GetAppID), "one");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(AppUtilTest, GetAppIdReturnsAnIdWithoutADotWhole) {
  RunAs("undotted");
  EXPECT_EQ(Get(AppUtil::GetAppID), "undotted");
}

TEST_F(AppUtilTest, GetCompleteAppIdReturnsTheWholeId) {
  EXPECT_EQ(Get(AppUtil::GetCompleteAppID), kApp);
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(AppUtilTest, IdsNeedAProcessId) {
  system_.SetPid(-1);
  EXPECT_EQ(Get(AppUtil::GetAppID), std::nullopt);
  EXPECT_EQ(Get(AppUtil::GetCompleteAppID), std::nullopt);
  EXPECT_THAT(Messages(), ElementsAre("E AppUtil.cc GetAppID: getpid failed",
                                      "E AppUtil.cc GetCompleteAppID: getpid failed"));
}

// The number in a line is of the function that the line names.
TEST_F(AppUtilTest, FailuresCarryThePlaceOfTheCaller) {
  system_.SetPid(-1);
  Get(AppUtil::GetAppID);
  Get(AppUtil::GetCompleteAppID);
  std::vector<int> numbers;
  for (const tvset::LogLine& line : set().log().lines()) {
    numbers.push_back(std::stoi(line.text.substr(line.text.find('(') + 1)));
  }
  ASSERT_EQ(numbers.size(), 2U);
  EXPECT_LT(numbers[0], numbers[1]);
}

TEST_F(AppUtilTest, IdsNeedARunningApplication) {
  set().applications().Terminate(kApp);
  EXPECT_EQ(Get(AppUtil::GetAppID), std::nullopt);
  EXPECT_EQ(Get(AppUtil::GetCompleteAppID), std::nullopt);
  EXPECT_THAT(Messages(),
              ElementsAre("I AppUtil.cc GetAppID: aul_app_get_appid_bypid failed",
                          "I AppUtil.cc GetCompleteAppID: aul_app_get_appid_bypid failed"));
}

TEST_F(AppUtilTest, IdsNeedTheirPlatformFunction) {
  Fail("aul_app_get_appid_bypid", -3);
  EXPECT_EQ(Get(AppUtil::GetAppID), std::nullopt);
  EXPECT_EQ(Get(AppUtil::GetCompleteAppID), std::nullopt);
}

TEST_F(AppUtilTest, IdsNeedMemory) {
  system_.FailNextStrdup();
  EXPECT_EQ(Get(AppUtil::GetAppID), std::nullopt);
  system_.FailNextStrdup();
  EXPECT_EQ(Get(AppUtil::GetCompleteAppID), std::nullopt);
}

TEST_F(AppUtilTest, GetFocusedAppIdReturnsWhoHasTheFocus) {
  EXPECT_EQ(AppUtil::GetFocusedAppID(), kApp);
  RunAs("other.App");
  EXPECT_EQ(AppUtil::GetFocusedAppID(), "other.App");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(AppUtilTest, GetFocusedAppIdIsEmptyWithoutAFocus) {
  set().applications().ClearFocus();
  EXPECT_EQ(AppUtil::GetFocusedAppID(), "");
  EXPECT_THAT(Messages(), ElementsAre("E AppUtil.cc GetFocusedAppID: app_manager/context failed"));
}

TEST_F(AppUtilTest, GetFocusedAppIdIsEmptyWhenThePlatformFails) {
  for (const char* function : {"app_manager_get_focused_app_context", "app_context_get_app_id"}) {
    ClearLog();
    Fail(function, -5, tvset::FaultMode::kOnce);
    EXPECT_EQ(AppUtil::GetFocusedAppID(), "") << function;
    EXPECT_THAT(Messages(),
                ElementsAre("E AppUtil.cc GetFocusedAppID: app_manager/context failed"));
    EXPECT_EQ(set().open_app_contexts(), 0U) << function;
  }
}

TEST_F(AppUtilTest, GetMetadataValueReturnsWhatThePackageDeclares) {
  Declare({{"key", "value"}, {"empty", ""}});
  EXPECT_EQ(AppUtil::GetMetadataValue("key"), "value");
  EXPECT_THAT(Messages(),
              ElementsAre("E AppUtil.cc GetMetadataValue: APPID: " + std::string(kApp)));
  EXPECT_EQ(AppUtil::GetMetadataValue("empty"), "");
}

TEST_F(AppUtilTest, GetMetadataValueIsEmptyForAKeyThatIsNotDeclared) {
  EXPECT_EQ(AppUtil::GetMetadataValue("key"), "");
  EXPECT_THAT(
      Messages(),
      ElementsAre("E AppUtil.cc GetMetadataValue: APPID: " + std::string(kApp),
                  "E AppUtil.cc GetMetadataValue: pkgmgrinfo_appinfo_get_metadata_value failed"));
}

TEST_F(AppUtilTest, GetMetadataValueIsEmptyWithoutAnId) {
  Fail("aul_app_get_appid_bypid");
  EXPECT_EQ(AppUtil::GetMetadataValue("key"), "");
  EXPECT_THAT(Messages(),
              ElementsAre("I AppUtil.cc GetCompleteAppID: aul_app_get_appid_bypid failed",
                          "E AppUtil.cc GetMetadataValue: Getting of AppID failed"));
}

TEST_F(AppUtilTest, GetMetadataValueIsEmptyWhenThePackageInformationFails) {
  Declare({{"key", "value"}});
  Fail("pkgmgrinfo_appinfo_get_appinfo", -3, tvset::FaultMode::kOnce);
  EXPECT_EQ(AppUtil::GetMetadataValue("key"), "");
  EXPECT_THAT(Messages(),
              ElementsAre("E AppUtil.cc GetMetadataValue: APPID: " + std::string(kApp),
                          "E AppUtil.cc GetMetadataValue: pkgmgrinfo_appinfo_get_appinfo failed"));

  Fail("pkgmgrinfo_appinfo_get_metadata_value", -1, tvset::FaultMode::kOnce);
  EXPECT_EQ(AppUtil::GetMetadataValue("key"), "");
  EXPECT_EQ(set().open_package_handles(), 0U);
}

TEST_F(AppUtilTest, GetMetadataValueIsEmptyForANullValue) {
  Declare({{"key", "value"}});
  system_.GiveNoNextMetadataValue();
  EXPECT_EQ(AppUtil::GetMetadataValue("key"), "");
  EXPECT_THAT(Messages(),
              ElementsAre("E AppUtil.cc GetMetadataValue: APPID: " + std::string(kApp)));
  EXPECT_EQ(set().open_package_handles(), 0U);
}

TEST_F(AppUtilTest, GetAppStateNamesEachState) {
  const std::pair<int, const char*> kStates[] = {{APP_STATE_FOREGROUND, "FOREGROUND"},
                                                 {APP_STATE_BACKGROUND, "BACKGROUND"},
                                                 {APP_STATE_SERVICE, "SERVICE"},
                                                 {APP_STATE_TERMINATED, "TERMINATED"},
                                                 {APP_STATE_UNDEFINED, "UNDEFINED"},
                                                 {5, "UNDEFINED"},
                                                 {7, "UNDEFINED"}};
  for (const auto& [state, name] : kStates) {
    system_.ReportAppState(state);
    ClearLog();
    EXPECT_EQ(AppUtil::GetAppState(kApp), name) << state;
    EXPECT_THAT(Messages(),
                ElementsAre("I AppUtil.cc GetAppState: App ID : " + std::string(kApp),
                            "I AppUtil.cc GetAppState: App State : " + std::to_string(state)));
  }
}

TEST_F(AppUtilTest, GetAppStateOfAnEmptyIdIsTheCallersOwn) {
  set().applications().SetState(kApp, APP_STATE_BACKGROUND);
  ClearLog();
  EXPECT_EQ(AppUtil::GetAppState(""), "BACKGROUND");
  EXPECT_THAT(Messages(), ElementsAre("I AppUtil.cc GetAppState: App ID : " + std::string(kApp),
                                      "I AppUtil.cc GetAppState: App State : 2"));
}

TEST_F(AppUtilTest, GetAppStateOfAnEmptyIdNeedsAnId) {
  Fail("aul_app_get_appid_bypid");
  EXPECT_EQ(AppUtil::GetAppState(""), "");
  EXPECT_THAT(Messages(),
              ElementsAre("I AppUtil.cc GetCompleteAppID: aul_app_get_appid_bypid failed",
                          "E AppUtil.cc GetAppState: Failed to get appid"));
}

TEST_F(AppUtilTest, GetAppStateIsEmptyForAnApplicationThatDoesNotRun) {
  set().applications().Terminate(kApp);
  EXPECT_EQ(AppUtil::GetAppState(kApp), "");
  EXPECT_THAT(Messages(), ElementsAre("I AppUtil.cc GetAppState: App ID : " + std::string(kApp),
                                      "E AppUtil.cc GetAppState: Failed to get app context"));
}

TEST_F(AppUtilTest, GetAppStateIsEmptyWhenTheStateCannotBeRead) {
  Fail("app_context_get_app_state");
  EXPECT_EQ(AppUtil::GetAppState(kApp), "");
  EXPECT_THAT(Messages(), ElementsAre("I AppUtil.cc GetAppState: App ID : " + std::string(kApp),
                                      "E AppUtil.cc GetAppState: Failed to get app state"));
}

TEST_F(AppUtilTest, GoesOnWhenAContextCannotBeDestroyed) {
  Fail("app_context_destroy", -1, tvset::FaultMode::kOnce);
  EXPECT_EQ(AppUtil::GetFocusedAppID(), kApp);
  Fail("app_context_destroy", -1, tvset::FaultMode::kOnce);
  EXPECT_EQ(AppUtil::GetAppState(kApp), "FOREGROUND");
  EXPECT_EQ(set().open_app_contexts(), 2U);
  tvset::Set::Start({folder() / "state", "uhd"});
}

}  // namespace
}  // namespace orvane::test
