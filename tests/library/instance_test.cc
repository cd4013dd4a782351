// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "library_fixture.h"
#include "orvane/orvane_instance.h"
#include "tzplatform_config.h"

namespace orvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr char kSpecialMode[] = "http://dravelt.example/tv/metadata/register.keygrab.mode.special";
constexpr char kPlatformPrivilege[] = "http://tizen.org/privilege/internal/default/platform";
constexpr char kImeKey[] = "com.korvale/featureconf/ime.resolution";
constexpr char kPanelKey[] = "com.korvale/featureconf/ud_panel_supported";

class InstanceTest : public LibraryFixture {
 protected:
  static void SetFeature(const char* key, const char* type, const char* text) {
    set().features().Set(key, type, text, tvset::FeatureGroup::kCustom);
  }
  static std::vector<int> InjectedCodes() {
    std::vector<int> codes;
    for (const tvset::InjectedKey& key : set().keys().injected()) {
      EXPECT_EQ(key.mode, 2);
      codes.push_back(key.key_code);
    }
    return codes;
  }
  // How often the application's metadata was asked for.
  static int Lookups() {
    const std::vector<std::string> messages = Messages();
    return static_cast<int>(
        std::count(messages.begin(), messages.end(),
                   "E AppUtil.cc GetMetadataValue: APPID: " + std::string(kApp)));
  }
  void ExpectNoMetadata() {
    ExpectError("registerKeyInSpecialMode", "{}", 9, "NotSupportedError",
                "Application does not have required metadata value");
  }
};

TEST_F(InstanceTest, InitialisesKeyInjectionOnceForEachInstance) {
  EXPECT_EQ(set().keys().initialized(), 1);
  const XW_Instance second = host_.Create();
  EXPECT_EQ(set().keys().initialized(), 2);
  host_.Destroy(second);
  EXPECT_EQ(set().keys().initialized(), 2);
}

TEST_F(InstanceTest, IsMadeEvenIfKeyInjectionCannotBeInitialised) {
  Fail("VirtualKey_Initialize");
  const XW_Instance second = host_.Create();
  EXPECT_NE(host_.data(second), nullptr);
  host_.Destroy(second);
}

TEST_F(InstanceTest, LeavesUnknownNamesToTheFramework) {
  ExpectError("fly", "{}", 9, "NotSupportedError", "Unknown command: OrvaneManager_fly");
}

TEST_F(InstanceTest, GetVersionAnswersWhateverItsArguments) {
  ExpectSuccess("getVersion", "{}", R"("3.9")");
  ExpectSuccess("getVersion", R"({"version":[1,2]})", R"("3.9")");
}

TEST_F(InstanceTest, GetImeResolutionPassesTheFeatureThrough) {
  const std::pair<const char*, const char*> kTexts[] = {
      {"0", "0"}, {"1", "1"}, {"-7", "-7"}, {"2147483647", "2147483647"}, {"garbage", "0"}};
  for (const auto& [text, number] : kTexts) {
    SetFeature(kImeKey, "int", text);
    ExpectSuccess("getIMEResolution", "{}", number);
  }
}

TEST_F(InstanceTest, GetImeResolutionFailsWithoutTheFeature) {
  set().features().Remove(kImeKey);
  ExpectUnknownError("getIMEResolution", "{}", "Failed to get ime resolution");
  EXPECT_THAT(Messages(), ElementsAre("E orvane_instance.cc getIMEResolution: Failed to get ime "
                                      "resolution"));
}

TEST_F(InstanceTest, GetImeResolutionFailsWithThePlatform) {
  Fail("system_info_get_custom_int", -5);
  ExpectUnknownError("getIMEResolution", "{}", "Failed to get ime resolution");
}

TEST_F(InstanceTest, SetEpopAppWindowSucceedsOnAPanelThatSupportsIt) {
  SetFeature(kPanelKey, "bool", "true");
  ExpectSuccess("setEpopAppWindow", "{}", "true");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(InstanceTest, SetEpopAppWindowIsNotSupportedOnOtherPanels) {
  SetFeature(kPanelKey, "bool", "false");
  ExpectError("setEpopAppWindow", "{}", 9, "NotSupportedError",
              "setEpopappWindow is only supported on UHD models");
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(InstanceTest, SetEpopAppWindowTakesAFailureForAPanelWithoutSupport) {
  SetFeature(kPanelKey, "bool", "true");
  Fail("system_info_get_custom_bool", -22);
  ExpectError("setEpopAppWindow", "{}", 9, "NotSupportedError",
              "setEpopappWindow is only supported on UHD models");
  EXPECT_THAT(Messages(), ElementsAre("E orvane_instance.cc setEpopAppWindow: get "
                                      "ud_panel_supported value failed"));
}

TEST_F(InstanceTest, SetEpopAppWindowIsNotSupportedWithoutTheFeature) {
  set().features().Remove(kPanelKey);
  ExpectError("setEpopAppWindow", "{}", 9, "NotSupportedError",
              "setEpopappWindow is only supported on UHD models");
  EXPECT_THAT(Messages(), SizeIs(1));
}

TEST_F(InstanceTest, CheckPlatformLevelPrivilegeSucceedsWithoutAValue) {
  Declare({}, {kPlatformPrivilege});
  EXPECT_EQ(Call("checkPlatformLevelPrivilege").serialize(), R"({"status":"success"})");
}

TEST_F(InstanceTest, CheckPlatformLevelPrivilegePassesTheRefusalOn) {
  ExpectError("checkPlatformLevelPrivilege", "{}", 18, "SecurityError", "Permission denied");
  Declare({}, {kPlatformPrivilege});
  Fail("privilege_check_application", -13);
  ExpectError("checkPlatformLevelPrivilege", "{}", 18, "SecurityError", "Permission denied");
}

TEST_F(InstanceTest, GenerateKeyInjectsTheCodeOnce) {
  ExpectSuccess("generateKey", R"({"xKeyCode":76.9})", "true");
  EXPECT_THAT(InjectedCodes(), ElementsAre(76));
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(InstanceTest, GenerateKeyCutsEveryNumberToAnInteger) {
  for (const char* code : {"0", "-5.7", "-0.9", "2147483647", "1e300", "-1e300", "4294967297"}) {
    ExpectSuccess("generateKey", R"({"xKeyCode":)" + std::string(code) + "}", "true");
  }
  EXPECT_THAT(InjectedCodes(), ElementsAre(0, -5, 0, 2147483647, 2147483647,
                                           std::numeric_limits<int>::min(), 2147483647));
}

TEST_F(InstanceTest, GenerateKeySucceedsWhateverTheInjectionCameTo) {
  Fail("VirtualKey_Send_KeyCode");
  ExpectSuccess("generateKey", R"({"xKeyCode":76})", "true");
}

TEST_F(InstanceTest, GenerateKeyNeedsACode) {
  for (const char* arguments : {"{}", R"({"keyCode":76})", R"({"XKeyCode":76})"}) {
    ExpectError("generateKey", arguments, 17, "TypeMismatchError", "xKeyCode is required argument");
  }
  EXPECT_THAT(InjectedCodes(), IsEmpty());
}

TEST_F(InstanceTest, RegisterKeyInSpecialModeAsksOnceForDeclaredMetadata) {
  Declare({{kSpecialMode, "true"}});
  ExpectSuccess("registerKeyInSpecialMode", "{}", "true");
  ExpectSuccess("registerKeyInSpecialMode", "{}", "true");
  EXPECT_EQ(Lookups(), 1);
}

TEST_F(InstanceTest, RegisterKeyInSpecialModeTakesNothingButTrue) {
  for (const char* value : {"false", "TRUE", "True", "1", "true ", " true", "truetrue"}) {
    Declare({{kSpecialMode, value}});
    // Another page, which has asked for nothing yet.
    CloseInstance();
    instance_ = host_.Create();
    ExpectNoMetadata();
  }
}

TEST_F(InstanceTest, RegisterKeyInSpecialModeKeepsAValueThatIsNotTrue) {
  Declare({{kSpecialMode, "false"}});
  ExpectNoMetadata();
  Declare({{kSpecialMode, "true"}});
  ExpectNoMetadata();
  EXPECT_EQ(Lookups(), 1);
}

TEST_F(InstanceTest, RegisterKeyInSpecialModeAsksAgainAfterAnEmptyValue) {
  ExpectNoMetadata();
  Declare({{kSpecialMode, ""}});
  ExpectNoMetadata();
  Declare({{kSpecialMode, "true"}});
  ExpectSuccess("registerKeyInSpecialMode", "{}", "true");
  EXPECT_EQ(Lookups(), 3);
}

TEST_F(InstanceTest, RegisterKeyInSpecialModeTakesAFailedLookupForNoValue) {
  Declare({{kSpecialMode, "true"}});
  for (const char* function : {"aul_app_get_appid_bypid", "pkgmgrinfo_appinfo_get_appinfo",
                               "pkgmgrinfo_appinfo_get_metadata_value"}) {
    Fail(function, -1, tvset::FaultMode::kOnce);
    ExpectNoMetadata();
  }
  ExpectSuccess("registerKeyInSpecialMode", "{}", "true");
}

// Lets each allocation of the reply fail in turn.
void ExpectUnexpectedErrorWithoutMemory(void* instance, const std::string& usual_reply) {
  auto* const page =
      static_cast<extension::orvane::OrvaneInstance*>(static_cast<common::Instance*>(instance));
  const picojson::value no_arguments{picojson::object()};
  for (int allocation = 1;; ++allocation) {
    picojson::object out;
    bool failed = false;
    {
      const FailingAllocation fault(allocation);
      page->registerKeyInSpecialMode(no_arguments, out);
      failed = fault.failed();
    }
    if (!failed) {
      EXPECT_EQ(picojson::value(out).serialize(), usual_reply);
      EXPECT_GT(allocation, 1);
      return;
    }
    EXPECT_EQ(picojson::value(out).serialize(),
              R"({"error":{"code":9999,"message":"Unexpected error occurred",)"
              R"("name":"UnknownError"},"status":"error"})")
        << allocation;
  }
}

TEST_F(InstanceTest, RegisterKeyInSpecialModeAnswersWhenTheReplyCannotBeBuilt) {
  Declare({{kSpecialMode, "true"}});
  ExpectSuccess("registerKeyInSpecialMode", "{}", "true");
  ExpectUnexpectedErrorWithoutMemory(host_.data(instance_),
                                     R"({"result":true,"status":"success"})");
}

TEST_F(InstanceTest, RegisterKeyInSpecialModeAnswersWhenTheErrorCannotBeBuilt) {
  Declare({{kSpecialMode, "false"}});
  ExpectNoMetadata();
  ExpectUnexpectedErrorWithoutMemory(
      host_.data(instance_),
      R"({"error":{"code":9,"message":"Application does not have required metadata value",)"
      R"("name":"NotSupportedError"},"status":"error"})");
}

TEST_F(InstanceTest, GetUuidReturnsTheStoredUuid) {
  const std::string uuid = Call("getUuid").get("result").to_str();
  EXPECT_EQ(uuid.size(), 36U);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fwrite suceess",
                                      "I orvane_instance.cc getUuid: UUID is [" + uuid + "]"));
  ExpectSuccess("getUuid", "{}", "\"" + uuid + "\"");
}

// Whatever stands in the file up to its first zero is the text: the page gets no zeros behind it.
TEST_F(InstanceTest, GetUuidReturnsAShortTextAsItStands) {
  Call("getUuid");
  const std::filesystem::path root = tzplatform_getenv(static_cast<tzplatform_variable>(61));
  std::ofstream(root / kPackage / "data" / "uuid") << "short" + std::string(31, '\0');
  ExpectSuccess("getUuid", "{}", R"("short")");
}

TEST_F(InstanceTest, GetUuidNamesNoCause) {
  Fail("aul_app_get_appid_bypid");
  ExpectUnknownError("getUuid", "{}", "Invalid Choice");
  EXPECT_THAT(Messages(), Contains("I orvane_instance.cc getUuid: UUID is not generated"));
}

TEST_F(InstanceTest, GetForegroundAppIdReturnsWhoHasTheFocus) {
  ExpectSuccess("getForegroundAppId", "{}", R"("aBcDe01234.Player")");
  EXPECT_THAT(Messages(), ElementsAre("E orvane_instance.cc getForegroundAppId: appID is "
                                      "[aBcDe01234.Player]"));
}

TEST_F(InstanceTest, GetForegroundAppIdFailsWithoutAFocus) {
  set().applications().ClearFocus();
  ExpectUnknownError("getForegroundAppId", "{}", "AppID is null");
  EXPECT_THAT(Messages(), ElementsAre("E AppUtil.cc GetFocusedAppID: app_manager/context failed",
                                      "E orvane_instance.cc getForegroundAppId: appID is null"));
}

TEST_F(InstanceTest, GetAppStateReturnsTheState) {
  ExpectSuccess("getAppState", R"({"appid":""})", R"("FOREGROUND")");
  ExpectSuccess("getAppState", R"({"appid":"aBcDe01234.Player"})", R"("FOREGROUND")");
}

TEST_F(InstanceTest, GetAppStateFailsForAnApplicationThatDoesNotRun) {
  ExpectUnknownError("getAppState", R"({"appid":"nobody.Home"})", "Failed to get app state");
}

TEST_F(InstanceTest, GetAppStateTakesAnyText) {
  const std::string huge(1 << 20, 'x');
  for (const std::string& id : {huge, std::string("%s%n"), std::string(R"(\u0000)")}) {
    Call("getAppState", R"({"appid":")" + id + "\"}");
  }
}

TEST_F(InstanceTest, RequestTvContextTaskLaunchesTheLastSource) {
  ExpectSuccess("requestTvContextTask", R"({"target":0,"action":0})", "true");
  ExpectSuccess("requestTvContextTask", R"({"target":0.9,"action":-0.9})", "true");

  const std::vector<tvset::ContextTask> tasks = set().context_manager().tasks();
  ASSERT_THAT(tasks, SizeIs(2));
  EXPECT_EQ(tasks[0].target, "last:source");
  EXPECT_EQ(tasks[0].action, "launch");
  EXPECT_EQ(set().context_manager().initialized(), 2);
}

TEST_F(InstanceTest, RequestTvContextTaskRejectsNumbersOutsideItsTables) {
  for (const char* number : {"1", "-1", "2147483648", "-2147483649", "1e300", "-1e300", "1.5",
                             "9007199254740992", "4294967296"}) {
    const std::string n(number);
    ExpectUnknownError("requestTvContextTask", R"({"target":)" + n + R"(,"action":0})",
                       "tvcontext_request_task is failed");
    ExpectUnknownError("requestTvContextTask", R"({"target":0,"action":)" + n + "}",
                       "tvcontext_request_task is failed");
  }
  EXPECT_THAT(set().context_manager().tasks(), IsEmpty());
}

TEST_F(InstanceTest, RequestTvContextTaskStopsWhenTheManagerCannotBeInitialised) {
  Fail("app_context_manager_init");
  ExpectUnknownError("requestTvContextTask", R"({"target":0,"action":0})",
                     "vcontext_init is failed");
  ExpectUnknownError("requestTvContextTask", R"({"target":5,"action":0})",
                     "vcontext_init is failed");
  EXPECT_THAT(set().context_manager().tasks(), IsEmpty());
}

TEST_F(InstanceTest, RequestTvContextTaskFailsWithTheManager) {
  Fail("app_context_manager_request_task", -3);
  ExpectUnknownError("requestTvContextTask", R"({"target":0,"action":0})",
                     "tvcontext_request_task is failed");
}

TEST_F(InstanceTest, GetSystemStatKnowsTwoResources) {
  for (const char* resource : {"cpu", "Memory", "", "CPUS", "MEMORY "}) {
    ExpectUnknownError("getSystemStat",
                       R"({"callbackId":1,"resource":")" + std::string(resource) + "\"}",
                       "Invalid resource for getSystemStat");
  }
  AwaitIdleWorker();
  EXPECT_THAT(host_.posts(instance_), IsEmpty());
}

TEST_F(InstanceTest, RowsOfTheContextTablesHaveTheirFixedSize) {
  static_assert(sizeof(extension::orvane::ContextTaskEntry) == 1028);
  static_assert(offsetof(extension::orvane::ContextTaskEntry, name) == 4);
}

}  // namespace
}  // namespace orvane::test
