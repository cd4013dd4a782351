// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <errno.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <set>

#include "orvane/AppUUID.h"
#include "set_fixture.h"
#include "system_fakes.h"
#include "tzplatform_config.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;

// Version 4, variant 1, lower case.
constexpr char kUuid[] = "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";
constexpr int kFailure = 9999;
constexpr int kCannotCreate = 101;

class AppUuidTest : public SetFixture {
 protected:
  AppUuidTest()
      : file_(std::filesystem::path(tzplatform_getenv(static_cast<tzplatform_variable>(61))) /
              kPackage / "data" / "uuid") {}

  int Get() {
    buffer_.fill('\0');
    return AppUUID::GetUUID(buffer_.data());
  }
  std::string text() const { return buffer_.data(); }
  void Store(const std::string& text) { std::ofstream(file_) << text; }

  SystemFakes system_;
  const std::filesystem::path file_;
  std::array<char, 37> buffer_{};
};

TEST_F(AppUuidTest, GeneratesRandomUuids) {
  std::set<std::string> uuids;
  for (int i = 0; i < 100; ++i) {
    buffer_.fill('x');
    AppUUID::GenerateUUID(buffer_.data());
    EXPECT_THAT(text(), MatchesRegex(kUuid));
    uuids.insert(text());
  }
  EXPECT_EQ(uuids.size(), 100U);
}

TEST_F(AppUuidTest, MakesTheFileOnTheFirstCall) {
  EXPECT_EQ(Get(), 0);
  EXPECT_THAT(text(), MatchesRegex(kUuid));
  EXPECT_EQ(ReadFile(file_), text());
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fwrite suceess"));
}

TEST_F(AppUuidTest, ReturnsTheStoredTextFromThenOn) {
  Get();
  const std::string first = text();
  ClearLog();
  EXPECT_EQ(Get(), 0);
  EXPECT_EQ(text(), first);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fread suceess"));
}

TEST_F(AppUuidTest, ReturnsAnyTextOfTheRightLength) {
  const std::string stored = "these are just thirty-six characters";
  ASSERT_EQ(stored.size(), 36U);
  Store(stored);
  EXPECT_EQ(Get(), 0);
  EXPECT_EQ(text(), stored);
  EXPECT_EQ(ReadFile(file_), stored);
}

TEST_F(AppUuidTest, ReturnsTextWithAZeroUpToIt) {
  Store(std::string("short") + std::string(31, '\0'));
  EXPECT_EQ(Get(), 0);
  EXPECT_EQ(text(), "short");
}

TEST_F(AppUuidTest, ReplacesAFileOfAnotherLength) {
  for (const size_t length : {0, 10, 35, 37, 5000}) {
    Store(std::string(length, 'u'));
    ClearLog();
    EXPECT_EQ(Get(), 0) << length;
    EXPECT_THAT(text(), MatchesRegex(kUuid)) << length;
    EXPECT_EQ(ReadFile(file_), text()) << length;
    EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid newly generated"));
  }
}

TEST_F(AppUuidTest, IsSharedByApplicationsOfOnePackage) {
  Get();
  const std::string first = text();
  tvset::Application other;
  other.id = std::string(kPackage) + ".Other";
  other.package = kPackage;
  set().applications().Install(other);
  set().applications().Launch(other.id, getpid());
  EXPECT_EQ(Get(), 0);
  EXPECT_EQ(text(), first);
}

TEST_F(AppUuidTest, NeedsTheApplicationsId) {
  Fail("aul_app_get_appid_bypid");
  EXPECT_EQ(Get(), kFailure);
  EXPECT_THAT(Messages(), ElementsAre("I AppUtil.cc GetAppID: aul_app_get_appid_bypid failed",
                                      "E AppUUID.cc GetUUID: getAppID failed"));
}

TEST_F(AppUuidTest, NeedsMemoryForTheId) {
  system_.FailNextStrdup();
  EXPECT_EQ(Get(), kFailure);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: getAppID failed"));
}

TEST_F(AppUuidTest, LogsTheCauseWhenTheFileCannotBeMade) {
  std::filesystem::remove_all(file_.parent_path());
  EXPECT_EQ(Get(), kCannotCreate);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fopen failed, errno: [" +
                                      std::to_string(ENOENT) + "]"));
}

TEST_F(AppUuidTest, FailsWhenTheApplicationRootIsNotKnown) {
  Fail("tzplatform_getenv");
  system_.RedirectFile("/" + std::string(kPackage) + "/data/uuid", folder() / "no" / "file");
  EXPECT_EQ(Get(), kCannotCreate);
}

TEST_F(AppUuidTest, FailsWhenTheNewFileCannotBeWritten) {
  system_.FailNextWrite();
  EXPECT_EQ(Get(), kFailure);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fwrite failed"));
}

// What was written counts, and not what the disk took: the next call finds a file of no length and
// makes another.
TEST_F(AppUuidTest, LogsTheLossOfAFileOnAFullDisk) {
  system_.RedirectFile(file_, "/dev/full", "w+");
  EXPECT_EQ(Get(), 0);
  EXPECT_THAT(text(), MatchesRegex(kUuid));
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fwrite suceess",
                                      "E AppUUID.cc GetUUID: uuid fclose failed, errno: [" +
                                          std::to_string(ENOSPC) + "]"));
}

TEST_F(AppUuidTest, LogsTheLossOfAReplacedFileOnAFullDisk) {
  Store("too short");
  system_.RedirectFile(file_, "/dev/full", "w+");
  EXPECT_EQ(Get(), 0);
  EXPECT_THAT(text(), MatchesRegex(kUuid));
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid newly generated",
                                      "E AppUUID.cc GetUUID: uuid fclose failed, errno: [" +
                                          std::to_string(ENOSPC) + "]"));
}

TEST_F(AppUuidTest, FailsWhenTheFilesSizeIsNotKnown) {
  Get();
  ClearLog();
  system_.FailStat(file_);
  EXPECT_EQ(Get(), kFailure);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: stat failed"));
}

TEST_F(AppUuidTest, FailsWhenAnOldFileCannotBeReplaced) {
  Store("too short");
  system_.FailNextWrite();
  EXPECT_EQ(Get(), kFailure);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fwrite failed"));
}

TEST_F(AppUuidTest, FailsWhenAnOldFileCannotBeOpenedForWriting) {
  Store("too short");
  system_.RedirectFile(file_, folder() / "no" / "file", "w+");
  EXPECT_EQ(Get(), kFailure);
  EXPECT_THAT(Messages(), ElementsAre("E AppUUID.cc GetUUID: uuid fwrite failed"));
  EXPECT_EQ(ReadFile(file_), "too short");
}

}  // namespace
}  // namespace orvane::test
