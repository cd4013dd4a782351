// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <string>
#include <vector>

#include <dlog.h>
#include <pkgmgr-info.h>
#include <privilege.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kApp[] = "ab12cd34ef.Player";
constexpr char kPrivilege[] = "http://tizen.org/privilege/tv.inputdevice";

class PackageInfoTest : public SetTest {
 protected:
  PackageInfoTest() {
    Application application;
    application.id = kApp;
    application.package = "ab12cd34ef";
    application.metadata = {
        {"http://example.com/Key", "first"}, {"http://example.com/key", "second"}, {"empty", ""}};
    application.privileges = {kPrivilege};
    set().applications().Install(application);
  }

  // An error code as text, or the value.
  static std::string Metadata(pkgmgrinfo_appinfo_h handle, const char* key) {
    char* value = nullptr;
    const int result = pkgmgrinfo_appinfo_get_metadata_value(handle, key, &value);
    return result == PMINFO_R_OK ? value : std::to_string(result);
  }
};

class OpenPackageInfoTest : public PackageInfoTest {
 protected:
  OpenPackageInfoTest() { pkgmgrinfo_appinfo_get_appinfo(kApp, &handle_); }
  ~OpenPackageInfoTest() override { pkgmgrinfo_appinfo_destroy_appinfo(handle_); }

  pkgmgrinfo_appinfo_h handle_ = nullptr;
};

TEST_F(PackageInfoTest, UnknownApplicationHasNoEntry) {
  pkgmgrinfo_appinfo_h handle = nullptr;
  EXPECT_EQ(pkgmgrinfo_appinfo_get_appinfo("none", &handle), PMINFO_R_ENOENT);
}

TEST_F(PackageInfoTest, NullArgumentsAreRefused) {
  pkgmgrinfo_appinfo_h handle = nullptr;
  EXPECT_EQ(pkgmgrinfo_appinfo_get_appinfo(nullptr, &handle), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_get_appinfo(kApp, nullptr), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(nullptr), PMINFO_R_EINVAL);
  EXPECT_EQ(Metadata(nullptr, "empty"), "-2");
}

TEST_F(PackageInfoTest, HandlesAreCountedUntilDestroyed) {
  pkgmgrinfo_appinfo_h handle = nullptr;
  ASSERT_EQ(pkgmgrinfo_appinfo_get_appinfo(kApp, &handle), PMINFO_R_OK);
  EXPECT_EQ(set().open_package_handles(), 1u);
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(handle), PMINFO_R_OK);
  EXPECT_EQ(set().open_package_handles(), 0u);
}

TEST_F(PackageInfoTest, DestroyedAndInventedHandlesAreRefused) {
  pkgmgrinfo_appinfo_h handle = nullptr;
  ASSERT_EQ(pkgmgrinfo_appinfo_get_appinfo(kApp, &handle), PMINFO_R_OK);
  ASSERT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(handle), PMINFO_R_OK);
  int place = 0;
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(handle), PMINFO_R_EINVAL);
  EXPECT_EQ(Metadata(handle, "empty"), "-2");
  EXPECT_EQ(Metadata(&place, "empty"), "-2");
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(&place), PMINFO_R_EINVAL);
}

TEST_F(OpenPackageInfoTest, KeysCompareWithoutCaseAndTheFirstWins) {
  EXPECT_EQ(Metadata(handle_, "HTTP://EXAMPLE.COM/KEY"), "first");
  EXPECT_EQ(Metadata(handle_, "http://example.com/key"), "first");
}

TEST_F(OpenPackageInfoTest, KeyWithoutValueIsEmpty) { EXPECT_EQ(Metadata(handle_, "empty"), ""); }

TEST_F(OpenPackageInfoTest, MissingKeyIsABadParameter) {
  EXPECT_EQ(Metadata(handle_, "http://example.com/other"), "-2");
}

TEST_F(OpenPackageInfoTest, NullKeyAndValueAreRefused) {
  char* value = nullptr;
  EXPECT_EQ(pkgmgrinfo_appinfo_get_metadata_value(handle_, nullptr, &value), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_get_metadata_value(handle_, "empty", nullptr), PMINFO_R_EINVAL);
}

TEST_F(OpenPackageInfoTest, ValueLivesAsLongAsTheHandle) {
  char* value = nullptr;
  char* again = nullptr;
  pkgmgrinfo_appinfo_get_metadata_value(handle_, "http://example.com/key", &value);
  set().applications().Uninstall(kApp);
  EXPECT_STREQ(value, "first");
  pkgmgrinfo_appinfo_get_metadata_value(handle_, "http://example.com/key", &again);
  EXPECT_EQ(value, again);
}

TEST_F(PackageInfoTest, DeclaredPrivilegeIsGranted) {
  EXPECT_EQ(privilege_check_application(kApp, kPrivilege), 0);
  EXPECT_FALSE(LogHas("privilege"));
}

TEST_F(PackageInfoTest, RefusalNamesTheMissingLine) {
  EXPECT_EQ(privilege_check_application(kApp, "http://example.com/privilege/x"), -13);
  const LogLine line = set().log().lines().back();
  EXPECT_EQ(line.tag, "TVSET");
  EXPECT_EQ(line.priority, 6);
  EXPECT_EQ(line.text,
            "ab12cd34ef.Player has not the privilege http://example.com/privilege/x: its "
            "config.xml lacks the line <tizen:privilege "
            "name=\"http://example.com/privilege/x\"/>");
}

// Keeps what the set refused.
class Refusals : public Observer {
 public:
  Refusals() { Set::Instance().events().Add(this); }
  ~Refusals() override { Set::Instance().events().Remove(this); }
  void OnRefusal(const Refusal& refusal) override { told.push_back(refusal); }

  std::vector<Refusal> told;
};

TEST_F(PackageInfoTest, RefusalIsToldToObserversWithItsThread) {
  Refusals refusals;
  set().log().Write(LOG_ID_MAIN, DLOG_ERROR, "TVSET", "a line of the same tag");
  privilege_check_application(kApp, "http://example.com/privilege/x");
  ASSERT_EQ(refusals.told.size(), 1u);
  EXPECT_EQ(refusals.told[0].tid, gettid());
  EXPECT_EQ(refusals.told[0].text, set().log().lines().back().text + ".");
}

TEST_F(PackageInfoTest, PrivilegeCheckRefusesNullAndUnknown) {
  EXPECT_EQ(privilege_check_application(nullptr, kPrivilege), -22);
  EXPECT_EQ(privilege_check_application(kApp, nullptr), -22);
  EXPECT_EQ(privilege_check_application("none", kPrivilege), -3);
}

}  // namespace
}  // namespace tvset::testing
