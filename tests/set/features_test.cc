// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/features.h"

#include <cstdlib>
#include <fstream>
#include <string>

#include <system_info.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kPanel[] = "com.korvale/featureconf/ud_panel_supported";
constexpr char kResolution[] = "com.korvale/featureconf/ime.resolution";

class FeaturesTest : public SetTest {
 protected:
  static int Int(const std::string& key, int otherwise = -99) {
    int value = otherwise;
    return system_info_get_custom_int(key.c_str(), &value) == 0 ? value : otherwise;
  }

  static bool Bool(const std::string& key) {
    bool value = false;
    EXPECT_EQ(system_info_get_custom_bool(key.c_str(), &value), 0) << key;
    return value;
  }

  static std::string PlatformString(const std::string& key) {
    char* value = nullptr;
    if (system_info_get_platform_string(key.c_str(), &value) != 0) return "none";
    const std::string text = value;
    std::free(value);
    return text;
  }

  std::string WriteProfile(const std::string& text) {
    const std::filesystem::path file = folder() / "model-config.xml";
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
  }

  // What Load says of a profile with that text, without the folder.
  std::string ErrorOf(const std::string& text) {
    const std::string file = WriteProfile(text);
    try {
      set().features().Load(file);
    } catch (const SetError& error) {
      const std::string what = error.what();
      return what.substr(what.find("model-config.xml"));
    }
    return "accepted";
  }
};

TEST_F(FeaturesTest, UhdSetHasThePanelAndTheLargeKeyboard) {
  EXPECT_TRUE(Bool(kPanel));
  EXPECT_EQ(Int(kResolution), 1);
}

TEST_F(FeaturesTest, FhdSetHasNeither) {
  StartSet("fhd");
  EXPECT_FALSE(Bool(kPanel));
  EXPECT_EQ(Int(kResolution), 0);
}

TEST_F(FeaturesTest, ShippedProfilesAreClean) {
  for (const char* profile : {"uhd", "fhd"}) {
    StartSet(profile);
    EXPECT_EQ(set().features().warnings(), std::vector<std::string>()) << profile;
    EXPECT_NE(PlatformString("tizen.org/feature/platform.version"), "none") << profile;
    EXPECT_NE(PlatformString("tizen.org/system/model_name"), "none") << profile;
    EXPECT_TRUE(
        set().features().Find("tizen.org/feature/screen.width", "int", FeatureGroup::kPlatform));
  }
}

TEST_F(FeaturesTest, SchemeBeforeAKeyMayBeLeftOut) {
  EXPECT_EQ(Int(std::string("http://") + kResolution), 1);
  set().features().Set("http://a.b/c", "int", "5", FeatureGroup::kCustom);
  EXPECT_EQ(Int("a.b/c"), 5);
  set().features().Remove("http://a.b/c");
  EXPECT_EQ(Int("a.b/c"), -99);
}

TEST_F(FeaturesTest, MissingKeyTypeOrGroupIsABadParameter) {
  int number = 7;
  bool flag = true;
  char* text = nullptr;
  EXPECT_EQ(system_info_get_custom_int("a.b/none", &number), -22);
  EXPECT_EQ(system_info_get_custom_int(kPanel, &number), -22);
  EXPECT_EQ(system_info_get_custom_bool(kResolution, &flag), -22);
  EXPECT_EQ(system_info_get_custom_int("tizen.org/feature/screen.width", &number), -22);
  EXPECT_EQ(system_info_get_platform_string(kPanel, &text), -22);
  EXPECT_EQ(system_info_get_platform_string("tizen.org/feature/screen.width", &text), -22);
  EXPECT_EQ(number, 7);
  EXPECT_TRUE(flag);
  EXPECT_EQ(text, nullptr);
}

TEST_F(FeaturesTest, NullArgumentsAreRefused) {
  int number = 0;
  bool flag = false;
  char* text = nullptr;
  EXPECT_EQ(system_info_get_custom_int(nullptr, &number), -22);
  EXPECT_EQ(system_info_get_custom_int(kResolution, nullptr), -22);
  EXPECT_EQ(system_info_get_custom_bool(nullptr, &flag), -22);
  EXPECT_EQ(system_info_get_custom_bool(kPanel, nullptr), -22);
  EXPECT_EQ(system_info_get_platform_string(nullptr, &text), -22);
  EXPECT_EQ(system_info_get_platform_string("tizen.org/system/model_name", nullptr), -22);
}

TEST_F(FeaturesTest, OnlyTwoSpellingsAreTrue) {
  for (const char* text : {"true", "TRUE"}) {
    set().features().Set("a.b/c", "bool", text, FeatureGroup::kCustom);
    EXPECT_TRUE(Bool("a.b/c")) << text;
  }
  for (const char* text : {"True", "1", "yes", " true", "true ", ""}) {
    set().features().Set("a.b/c", "bool", text, FeatureGroup::kCustom);
    EXPECT_FALSE(Bool("a.b/c")) << text;
  }
}

TEST_F(FeaturesTest, IntReadsAsFarAsItsDigitsGo) {
  const std::pair<const char*, int> cases[] = {{"12", 12},  {"-3", -3},  {"+4", 4},  {" 5", 5},
                                               {"6 px", 6}, {"0x10", 0}, {"many", 0}};
  for (const auto& [text, number] : cases) {
    set().features().Set("a.b/c", "int", text, FeatureGroup::kCustom);
    EXPECT_EQ(Int("a.b/c"), number) << text;
  }
}

TEST_F(FeaturesTest, DeviceIdIsRandomAndStays) {
  const std::string id = PlatformString("http://tizen.org/system/tizenid");
  EXPECT_EQ(id.size(), 32u);
  StartSet();
  EXPECT_EQ(PlatformString("tizen.org/system/tizenid"), id);
}

TEST_F(FeaturesTest, SetRefusesUnknownTypesAndBadKeys) {
  FeatureStore& features = set().features();
  EXPECT_THROW(features.Set("a.b/c", "integer", "1", FeatureGroup::kCustom), SetError);
  EXPECT_THROW(features.Set("", "int", "1", FeatureGroup::kCustom), SetError);
  EXPECT_THROW(features.Set(std::string(256, 'k'), "int", "1", FeatureGroup::kCustom), SetError);
}

TEST_F(FeaturesTest, ProfileTextIsTakenAsItStands) {
  StartSet(WriteProfile(R"(<model-config>
    <platform><key name="a/s" type="string"> two words </key><any name="a/b" type="string"> </any>
      <key name="a/e" type="string">&lt;x&gt;</key></platform>
    <custom><key name="a/i" type="int">1</key><key name="a/i" type="int">2</key></custom>
  </model-config>)"));
  EXPECT_EQ(PlatformString("a/s"), " two words ");
  EXPECT_EQ(PlatformString("a/b"), " ");
  EXPECT_EQ(PlatformString("a/e"), "<x>");
  EXPECT_EQ(Int("a/i"), 2);
  EXPECT_EQ(set().features().list().size(), 4u);
}

TEST_F(FeaturesTest, IncompleteEntriesArePassedOverWithAWarning) {
  StartSet(WriteProfile(
      "<model-config>\n<custom>\n<key type=\"int\">1</key>\n<key name=\"a/t\">1</key>\n"
      "<key name=\"a/x\" type=\"int\"/>\n<key name=\"a/b\" type=\"bool\">yes</key>\n"
      "<key name=\"a/i\" type=\"int\">many</key>\n</custom>\n<other/>\n</model-config>"));
  const std::vector<std::string> warnings = set().features().warnings();
  ASSERT_EQ(warnings.size(), 6u);
  const std::string parts[] = {"model-config.xml:3: <key> is passed over: it has no name",
                               "model-config.xml:4: <key name=\"a/t\"> is passed over: it has no",
                               "model-config.xml:5: <key name=\"a/x\"> is passed over: it has no",
                               "model-config.xml:6: <key name=\"a/b\"> reads as false",
                               "model-config.xml:7: <key name=\"a/i\"> is no whole decimal number",
                               "model-config.xml:9: <other> is passed over"};
  for (size_t i = 0; i < warnings.size(); ++i) {
    EXPECT_NE(warnings[i].find(parts[i]), std::string::npos) << warnings[i];
  }
  EXPECT_EQ(set().features().list().size(), 2u);
}

TEST_F(FeaturesTest, ProfileErrorsNameFileLineAndEntry) {
  EXPECT_EQ(ErrorOf("<model-config>\n<custom>\n\n<key name=\"a/b\" type=\"integer\">1</key>\n"
                    "</custom></model-config>"),
            "model-config.xml:4: <key name=\"a/b\"> has the type \"integer\", but there are only "
            "bool, int, double and string");
  EXPECT_EQ(ErrorOf("<?xml version=\"1.0\"?>\n<config/>"),
            "model-config.xml:2: the root element is <config>, but a device profile has "
            "<model-config>");
  EXPECT_EQ(ErrorOf("<model-config>\n<custom>\n</model-config>").substr(0, 20),
            "model-config.xml:3: ");
  EXPECT_EQ(ErrorOf("").substr(0, 20), "model-config.xml:1: ");
  EXPECT_NE(ErrorOf("<model-config><custom><key name=\"" + std::string(256, 'k') +
                    "\" type=\"int\">1</key></custom></model-config>")
                .find("has a name of 256 bytes, but 255 are the most"),
            std::string::npos);
}

TEST_F(FeaturesTest, FailedLoadLeavesTheStoreAsItWas) {
  EXPECT_NE(ErrorOf("<config/>"), "accepted");
  EXPECT_THROW(set().features().Load(folder() / "none.xml"), SetError);
  EXPECT_THROW(set().features().Load(folder()), SetError);
  EXPECT_EQ(Int(kResolution), 1);
}

}  // namespace
}  // namespace tvset::testing
