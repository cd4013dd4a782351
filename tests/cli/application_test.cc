// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Which application and which set a script runs on.
#include <zip.h>

#include "command.h"

namespace orvane::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

using ApplicationTest = CommandTest;

constexpr char kWhoAmI[] = "console.log(dravelt.orvane.getForegroundAppId());";

TEST_F(ApplicationTest, RunsAsTheScratchApplicationByDefault) {
  EXPECT_EQ(Run({"exec", "-"}, kWhoAmI).out, "OrvaneDesk.Scratch\n");
}

TEST_F(ApplicationTest, RunsAsTheApplicationOfAFolder) {
  EXPECT_EQ(Run({"exec", "--app", WriteApplication(""), "-"}, kWhoAmI).out, "aBcDeFgHiJ.App\n");
}

TEST_F(ApplicationTest, RunsAsTheApplicationOfAnArchive) {
  WriteApplication("");
  zip_t* const zip = zip_open((folder() / "app.wgt").c_str(), ZIP_CREATE, nullptr);
  for (const char* name : {"config.xml", "index.html"}) {
    const std::string file = folder() / "app" / name;
    zip_file_add(zip, name, zip_source_file(zip, file.c_str(), 0, -1), 0);
  }
  ASSERT_EQ(zip_close(zip), 0);

  EXPECT_EQ(Run({"exec", "--app", "app.wgt", "-"}, kWhoAmI).out, "aBcDeFgHiJ.App\n");
  EXPECT_TRUE(std::filesystem::is_directory(state() / "unpacked"));
}

TEST_F(ApplicationTest, RefusesABrokenConfigWithLineAndElement) {
  const Outcome outcome = Run({"exec", "--app", WriteApplication("<tizen:metadata/>"), "-"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err,
              HasSubstr("app/config.xml:3: <tizen:metadata>: the attribute key is missing"));
}

TEST_F(ApplicationTest, WarnsOfWhatIsOddInTheConfigAndRuns) {
  const Outcome outcome =
      Run({"exec", "--app", WriteApplication("<tizen:profile name=\"phone\"/>"), "-"}, kWhoAmI);
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.err, HasSubstr("warning: "));
  EXPECT_THAT(outcome.err, HasSubstr("config.xml:3: <tizen:profile>"));
}

TEST_F(ApplicationTest, ReadsMetadataOfTheConfig) {
  const std::string app = WriteApplication(
      "<tizen:metadata key=\"http://dravelt.example/tv/metadata/register.keygrab.mode.special\" "
      "value=\"true\"/>\n"
      "<tizen:privilege name=\"http://tizen.org/privilege/tv.inputdevice\"/>");
  const Outcome outcome =
      Run({"call", "registerKeyInSpecialMode", "[\"Guide\"]", "\"TOPMOST\"", "--app", app});
  EXPECT_EQ(outcome.out, "true\n");
  EXPECT_EQ(Run({"call", "registerKeyInSpecialMode", "[\"Guide\"]", "\"TOPMOST\""}).exit_code, 1);
}

TEST_F(ApplicationTest, KnowsTheDevicesOwnKeys) {
  EXPECT_EQ(Run({"call", "registerKey", "[\"OneTouch1\", \"SignageTimer\"]"}).out, "true\n");
}

TEST_F(ApplicationTest, ChoosesTheProfile) {
  EXPECT_EQ(Run({"call", "setEpopAppWindow", "1", "--profile", "uhd"}).out, "true\n");
  EXPECT_THAT(Run({"call", "setEpopAppWindow", "1", "--profile", "fhd"}).out,
              HasSubstr("only supported on UHD models"));
  EXPECT_EQ(Run({"call", "setEpopAppWindow", "1"}, "", {"ORVANE_PROFILE=fhd"}).exit_code, 1);
}

TEST_F(ApplicationTest, RefusesAnUnknownProfile) {
  const Outcome outcome = Run({"call", "getVersion", "--profile", "hd"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("uhd"));
}

TEST_F(ApplicationTest, KeepsItsStateInTheFolderOfTheOption) {
  const std::string other = folder() / "other";
  const Outcome first = Run({"call", "getUuid", "--state", other});
  EXPECT_THAT(first.out, MatchesRegex("\"[0-9a-f-]{36}\"\n"));
  EXPECT_EQ("\"" + ReadText(folder() / "other/apps_rw/OrvaneDesk/data/uuid") + "\"\n", first.out);
  EXPECT_NE(Run({"call", "getUuid"}).out, first.out);
}

TEST_F(ApplicationTest, RefusesAStateFolderThatCannotBeMade) {
  Write("file", "");
  const Outcome outcome = Run({"call", "getVersion", "--state", "file/state"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("file/state"));
}

TEST_F(ApplicationTest, FailsAPlatformFunctionAlways) {
  const Outcome outcome = Run({"call", "getUuid", "--fail", "aul_app_get_appid_bypid=-1"});
  EXPECT_EQ(outcome.out, R"({"code":9999,"name":"UnknownError","message":"Invalid Choice"})"
                         "\n");
}

TEST_F(ApplicationTest, FailsAPlatformFunctionOnce) {
  const std::string script =
      "for (let i = 0; i < 2; ++i) {\n"
      "  try { console.log(dravelt.orvane.setIMEPosition()); }\n"
      "  catch (error) { console.log(error.message); }\n"
      "}\n";
  EXPECT_EQ(Run({"exec", "--fail", "system_info_get_custom_int=-5:once", "-"}, script).out,
            "Failed to get ime resolution\ntrue\n");
}

TEST_F(ApplicationTest, RefusesFaultsThatMeanNothing) {
  for (const char* fault : {"vconf_set_str", "=1", "vconf_set_str=", "vconf_set_str=x",
                            "vconf_set_str=1:twice", "vconf_set_str=0", "vconf_set=1"}) {
    const Outcome outcome = Run({"call", "getVersion", "--fail", fault});
    EXPECT_EQ(outcome.exit_code, 2) << fault;
    EXPECT_THAT(outcome.err, HasSubstr("vconf_set_str")) << fault;
  }
}

}  // namespace
}  // namespace orvane::cli
