// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/web_application.h"
#include "scratch_folder.h"

namespace orvane::app {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

const fs::path kData = TEST_DATA;

constexpr char kHead[] =
    "<widget xmlns=\"http://www.w3.org/ns/widgets\" "
    "xmlns:tizen=\"http://tizen.org/ns/widgets\" version=\"1.0.0\">\n"
    "<tizen:application id=\"abcdefghij.x\" package=\"abcdefghij\" required_version=\"3.0\"/>\n";

class ConfigTest : public ::testing::Test {
 protected:
  WebApplication LoadFolder(const fs::path& folder) {
    return Load(folder, scratch_.path() / "unpacked");
  }

  // Loads an application whose config.xml has `elements` from its third line on.
  WebApplication LoadWith(const std::string& elements) {
    scratch_.Write("app/index.html", "<!DOCTYPE html>");
    scratch_.Write("app/config.xml", kHead + elements + "\n</widget>\n");
    return LoadFolder(scratch_.path() / "app");
  }

  std::vector<Problem> ProblemsOf(const fs::path& folder) {
    try {
      LoadFolder(folder);
    } catch (const AppError& error) {
      return error.problems();
    }
    ADD_FAILURE() << folder << " was taken";
    return {};
  }

  ScratchFolder scratch_;
};

TEST_F(ConfigTest, ReadsEveryMember) {
  const WebApplication app = LoadFolder(kData / "player");

  EXPECT_EQ(app.id, "pLaYeR0123.Main");
  EXPECT_EQ(app.package, "pLaYeR0123");
  EXPECT_EQ(app.version, "1.20.300");
  EXPECT_EQ(app.required_version, "2.3");
  EXPECT_EQ(app.folder, fs::canonical(kData / "player"));
  EXPECT_THAT(app.metadata, ElementsAre(Pair("http://example.com/metadata/mode", "true"),
                                        Pair("http://example.com/metadata/flag", "")));
  EXPECT_THAT(app.privileges, ElementsAre("http://tizen.org/privilege/tv.inputdevice",
                                          "http://tizen.org/privilege/internet"));
  EXPECT_THAT(app.warnings, IsEmpty());
}

TEST_F(ConfigTest, PrefersTheNameWithoutALanguage) {
  EXPECT_EQ(LoadFolder(kData / "player").name, "A & B Player");
}

TEST_F(ConfigTest, ReadsANameThatIsWrittenInParts) {
  const WebApplication app = LoadWith(
      "<name>\n  Plain &amp; <span dir=\"ltr\">old</span> in\n  <![CDATA[<parts>]]></name>");
  EXPECT_EQ(app.name, "Plain & old in <parts>");
}

TEST_F(ConfigTest, TizenContentOverridesContent) {
  EXPECT_EQ(LoadFolder(kData / "player").content, "index.html?lang=en#top");
}

TEST_F(ConfigTest, KnowsElementsByNamespaceWhateverThePrefix) {
  const WebApplication app = LoadFolder(kData / "other-prefix");

  EXPECT_EQ(app.id, "abcdefghij.x");
  EXPECT_EQ(app.name, "abcdefghij.x");
  EXPECT_EQ(app.content, "index.html");
  EXPECT_THAT(app.metadata, ElementsAre(Pair("a", "b")));
}

TEST_F(ConfigTest, WarnsOfAnElementWithTheRightNameInTheWrongNamespace) {
  const WebApplication app = LoadWith("<privilege name=\"http://tizen.org/privilege/internet\"/>");

  EXPECT_THAT(app.privileges, IsEmpty());
  ASSERT_EQ(app.warnings.size(), 1U);
  EXPECT_EQ(app.warnings[0].line, 3);
  EXPECT_THAT(app.warnings[0].text, HasSubstr("Write <tizen:privilege>"));
}

TEST_F(ConfigTest, WarnsOfAMisspelledElement) {
  const WebApplication app =
      LoadWith("<tizen:priviledge name=\"http://tizen.org/privilege/internet\"/>");

  ASSERT_EQ(app.warnings.size(), 1U);
  EXPECT_EQ(app.warnings[0].element, "tizen:priviledge");
  EXPECT_THAT(app.warnings[0].text, HasSubstr("Did you mean \"privilege\"?"));
}

TEST_F(ConfigTest, WarnsOfADuplicatePrivilegeAndKeepsOne) {
  const std::string line = "<tizen:privilege name=\"http://tizen.org/privilege/internet\"/>\n";
  const WebApplication app = LoadWith(line + line);

  EXPECT_THAT(app.privileges, ElementsAre("http://tizen.org/privilege/internet"));
  ASSERT_EQ(app.warnings.size(), 1U);
  EXPECT_EQ(app.warnings[0].line, 4);
}

TEST_F(ConfigTest, WarnsOfADuplicateMetadataKey) {
  const WebApplication app = LoadWith(
      "<tizen:metadata key=\"k\" value=\"1\"/>\n\n<tizen:metadata key=\"k\" value=\"2\"/>");

  EXPECT_THAT(app.metadata, ElementsAre(Pair("k", "1"), Pair("k", "2")));
  ASSERT_EQ(app.warnings.size(), 1U);
  EXPECT_EQ(app.warnings[0].line, 5);
}

TEST_F(ConfigTest, WarnsOfAnUnknownProfile) {
  EXPECT_EQ(LoadWith("<tizen:profile name=\"television\"/>").warnings.size(), 1U);
  EXPECT_EQ(LoadWith("<tizen:profile name=\"mobile\"/>").warnings.size(), 1U);
  EXPECT_EQ(LoadWith("<tizen:profile name=\"tv-hotel\"/>").warnings.size(), 0U);
}

TEST_F(ConfigTest, WarnsOfAMalformedVersion) {
  for (const char* version : {"1", "1.2.3.4", "256.0.0", "1.0.65536", "a.b.c", "1.-2.3"}) {
    scratch_.Write("v/index.html", "");
    std::string text = std::string(kHead) + "</widget>";
    text.replace(text.find("1.0.0"), 5, version);
    scratch_.Write("v/config.xml", text);
    EXPECT_EQ(LoadFolder(scratch_.path() / "v").warnings.size(), 1U) << version;
  }
}

TEST_F(ConfigTest, TakesAByteOrderMarkAndWindowsLineEnds) {
  scratch_.Write("app/index.html", "");
  scratch_.Write("app/config.xml", std::string("\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n") + kHead +
                                       "\r\n<tizen:metadata/>\r\n</widget>");

  const auto problems = ProblemsOf(scratch_.path() / "app");

  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems[0].line, 5);
}

TEST_F(ConfigTest, TellsEveryErrorAtOnce) {
  scratch_.Write("app/config.xml",
                 "<widget xmlns=\"http://www.w3.org/ns/widgets\" "
                 "xmlns:tizen=\"http://tizen.org/ns/widgets\">\n"
                 "<tizen:application id=\"x\" package=\"y\"/>\n<tizen:metadata/>\n</widget>\n");

  const auto problems = ProblemsOf(scratch_.path() / "app");

  EXPECT_EQ(problems.size(), 5U);  // package, id, required_version, key, start file
}

TEST_F(ConfigTest, NamesTheFileTheLineAndTheElementInOneText) {
  scratch_.Write("app/config.xml",
                 std::string(kHead) + "<content src=\"https://x/\"/><tizen:metadata/></widget>");
  try {
    LoadFolder(scratch_.path() / "app");
    FAIL();
  } catch (const AppError& error) {
    EXPECT_THAT(error.what(),
                HasSubstr("app/config.xml:3: <tizen:metadata>: the attribute key is missing."));
  }
}

TEST_F(ConfigTest, RefusesAFolderWithoutConfig) {
  const auto problems = ProblemsOf(scratch_.path());
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_THAT(problems[0].file, EndsWith("config.xml"));
}

TEST_F(ConfigTest, RefusesAPathThatDoesNotExist) {
  const auto problems = ProblemsOf(scratch_.path() / "nowhere");
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_THAT(problems[0].text, HasSubstr("no such file or folder"));
}

TEST_F(ConfigTest, RefusesADeviceFile) {
  EXPECT_THAT(ProblemsOf("/dev/zero")[0].text, HasSubstr("neither a folder nor a file"));
}

TEST_F(ConfigTest, RefusesAnOversizeConfig) {
  scratch_.Write("app/config.xml", std::string(2 << 20, ' '));
  EXPECT_THAT(ProblemsOf(scratch_.path() / "app")[0].text, HasSubstr("larger than 1024 KiB"));
}

TEST_F(ConfigTest, SurvivesDeepNesting) {
  std::string text = kHead;
  for (int i = 0; i < 100000; ++i) text += "<a>";
  scratch_.Write("app/config.xml", text);
  EXPECT_EQ(ProblemsOf(scratch_.path() / "app").size(), 1U);
}

TEST_F(ConfigTest, SurvivesAVeryLongId) {
  std::string text = kHead;
  text.replace(text.find("abcdefghij.x"), 12, std::string(900000, 'a'));
  scratch_.Write("app/config.xml", text + "<content src=\"https://x/\"/></widget>");
  EXPECT_LT(ProblemsOf(scratch_.path() / "app")[0].text.size(), 300U);
}

struct Broken {
  const char* file;
  int line;
  const char* element;
  const char* text;
};

void PrintTo(const Broken& row, std::ostream* out) { *out << row.file; }

class BrokenConfigTest : public ConfigTest, public ::testing::WithParamInterface<Broken> {};

TEST_P(BrokenConfigTest, IsRefusedWithLineElementAndAdvice) {
  const Broken& row = GetParam();
  const std::string source = ReadText(kData / "broken" / (std::string(row.file) + ".xml"));
  scratch_.Write("app/config.xml", source);

  const auto problems = ProblemsOf(scratch_.path() / "app");

  ASSERT_FALSE(problems.empty());
  EXPECT_EQ(problems[0].line, row.line);
  EXPECT_EQ(problems[0].element, row.element);
  EXPECT_THAT(problems[0].text, HasSubstr(row.text));
}

const Broken kBroken[] = {
    {"no-application", 1, "widget", "<tizen:application> is missing"},
    {"two-applications", 4, "tizen:application", "another one in line 2"},
    {"id-missing", 3, "tizen:application", "id is missing"},
    {"id-too-short", 2, "tizen:application", "id=\"abcdefghi.x\" is not ten letters"},
    {"id-with-dash", 2, "tizen:application", "id=\"abcdefghij.my-app\" is not ten letters"},
    {"id-of-other-package", 2, "tizen:application", "does not begin with package=\"abcdefghij\""},
    {"package-missing", 2, "tizen:application", "package is missing"},
    {"package-too-long", 2, "tizen:application", "package=\"abcdefghijk\" is not ten"},
    {"required-version-missing", 2, "tizen:application", "required_version is missing"},
    {"required-version-malformed", 2, "tizen:application",
     "required_version=\"new\" is no version"},
    {"metadata-without-key", 4, "tizen:metadata", "key is missing"},
    {"privilege-without-name", 4, "tizen:privilege", "name is missing"},
    {"start-file-unknown", 3, "content", "\"start/page.html\" does not exist"},
    {"start-file-outside", 3, "content", "leads out of the application"},
    {"start-file-empty", 3, "content", "names no file"},
    {"start-file-default-missing", 1, "widget", "index.html, does not exist"},
    {"prefix-undeclared", 2, "tizen:application", "xmlns:tizen=\"http://tizen.org/ns/widgets\""},
    {"root-without-namespace", 1, "widget", "not in the widget namespace"},
    {"root-other", 1, "manifest", "must be <widget>"},
    {"end-tag-mismatch", 4, "widget", "reverse order"},
    {"quote-missing", 2, "tizen:application", "malformed"},
    {"empty", 1, "", "no element"},
    {"text-only", 1, "", "no element"},
    {"not-closed", 3, "", "ends while an element is still open"},
    {"not-utf8", 3, "", "Save the file as UTF-8"},
    {"utf16", 1, "", "Save the file as UTF-8"},
};

INSTANTIATE_TEST_SUITE_P(Files, BrokenConfigTest, ::testing::ValuesIn(kBroken),
                         [](const auto& row) {
                           std::string name = row.param.file;
                           for (char& c : name) c = c == '-' ? '_' : c;
                           return name;
                         });

}  // namespace
}  // namespace orvane::app
