// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/settings.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <vconf.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kMemory[] = "memory/runningApps/data";

class SettingsTest : public SetTest {
 protected:
  static std::string Get(const std::string& key) {
    char* value = vconf_get_str(key.c_str());
    if (value == nullptr) return "none";
    const std::string text = value;
    std::free(value);
    return text;
  }

  static void WriteFile(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
  }

  // What another process reads under the key, with a set of its own on the same state folder.
  static std::string ReadElsewhere(const std::string& key) {
    const std::string command = std::string(SETTING_READER) + " '" +
                                set().paths().state_folder().string() + "' '" + key + "'";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "no process";
    char text[256] = {};
    const size_t size = fread(text, 1, sizeof(text), pipe);
    return pclose(pipe) == 0 ? std::string(text, size) : "failed";
  }
};

TEST_F(SettingsTest, ValueComesBack) {
  for (const char* key : {"db/a", "file/a/b", "memory/a/b/c"}) {
    EXPECT_EQ(vconf_set_str(key, key), 0);
    EXPECT_EQ(Get(key), key);
  }
}

TEST_F(SettingsTest, EmptyTextIsAValue) {
  EXPECT_EQ(vconf_set_str(kMemory, "x"), 0);
  EXPECT_EQ(vconf_set_str(kMemory, ""), 0);
  EXPECT_EQ(Get(kMemory), "");
}

TEST_F(SettingsTest, FileHoldsTheTypeAndTheBytes) {
  vconf_set_str("db/greeting", "hello");
  std::ifstream stream(set().paths().settings() / "db" / "greeting", std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  const int type = VCONF_TYPE_STRING;
  EXPECT_EQ(bytes, std::string(reinterpret_cast<const char*>(&type), sizeof(type)) + "hello");
}

TEST_F(SettingsTest, MemoryValuesLieApart) {
  vconf_set_str(kMemory, "x");
  EXPECT_TRUE(std::filesystem::exists(set().paths().memory_settings() / "runningApps/data"));
}

TEST_F(SettingsTest, MissingKeyHasNoValue) { EXPECT_EQ(Get(kMemory), "none"); }

TEST_F(SettingsTest, NullArgumentsAreRefused) {
  EXPECT_NE(vconf_set_str(nullptr, "x"), 0);
  EXPECT_NE(vconf_set_str(kMemory, nullptr), 0);
  EXPECT_EQ(vconf_get_str(nullptr), nullptr);
}

TEST_F(SettingsTest, KeysOutsideTheSettingsAreRefused) {
  for (const char* key : {"", "x", "other/x", "/db/x", "db", "db/", "memory//x", "file/../x",
                          "db/./x", "db/x/", "db/..", "file/.~1.0"}) {
    EXPECT_NE(vconf_set_str(key, "x"), 0) << key;
    EXPECT_EQ(vconf_get_str(key), nullptr) << key;
  }
}

TEST_F(SettingsTest, KeyWithAPathThatIsTooLongIsRefused) {
  const std::string part(200, 'k');
  std::string key = "db";
  for (int i = 0; i < 6; ++i) key += "/" + part;
  EXPECT_NE(vconf_set_str(key.c_str(), "x"), 0);
}

TEST_F(SettingsTest, FolderIsNoKey) {
  vconf_set_str("db/a/b", "x");
  EXPECT_NE(vconf_set_str("db/a", "x"), 0);
  EXPECT_EQ(Get("db/a"), "none");
  EXPECT_NE(vconf_set_str("db/a/b/c", "x"), 0);
  EXPECT_EQ(Get("db/a/b"), "x");
}

TEST_F(SettingsTest, ValueOfAnotherTypeIsNoString) {
  WriteFile(set().paths().settings() / "db/number", std::string("\x29\0\0\0\x05\0\0\0", 8));
  EXPECT_EQ(Get("db/number"), "none");
  const std::vector<Setting> settings = set().settings().list();
  ASSERT_EQ(settings.size(), 1u);
  EXPECT_EQ(settings[0].type, VCONF_TYPE_INT);
  EXPECT_EQ(settings[0].value, "5");
}

TEST_F(SettingsTest, DamagedFileHasNoValue) {
  WriteFile(set().paths().settings() / "db/short", std::string("\x28\0", 2));
  EXPECT_EQ(Get("db/short"), "none");
  EXPECT_FALSE(set().settings().Exists("db/short"));
}

TEST_F(SettingsTest, FailedWriteLeavesTheOldValue) {
  vconf_set_str("db/a", "old");
  // A folder in the way of the new file's name makes the rename fail; nothing else of the write
  // does.
  const std::filesystem::path file = set().paths().settings() / "db/a";
  std::filesystem::rename(file, file.string() + ".kept");
  std::filesystem::create_directories(file / "x");
  EXPECT_NE(vconf_set_str("db/a", "new"), 0);
  std::filesystem::remove_all(file);
  std::filesystem::rename(file.string() + ".kept", file);
  EXPECT_EQ(Get("db/a"), "old");
  EXPECT_EQ(set().settings().list().size(), 1u) << "a temporary file is left";
}

TEST_F(SettingsTest, LargeValueIsKeptWhole) {
  const std::string value(100'000, 'v');
  EXPECT_EQ(vconf_set_str("file/large", value.c_str()), 0);
  EXPECT_EQ(Get("file/large"), value);
}

TEST_F(SettingsTest, RestartForgetsMemoryOnly) {
  vconf_set_str("db/a", "1");
  vconf_set_str("file/a", "2");
  vconf_set_str(kMemory, "3");
  StartSet();
  EXPECT_EQ(Get("db/a"), "1");
  EXPECT_EQ(Get("file/a"), "2");
  EXPECT_EQ(Get(kMemory), "none");
}

TEST_F(SettingsTest, AnotherProcessReadsTheLastValue) {
  vconf_set_str(kMemory, "one");
  EXPECT_EQ(ReadElsewhere(kMemory), "one");
  vconf_set_str(kMemory, "two");
  EXPECT_EQ(ReadElsewhere(kMemory), "two");
}

TEST_F(SettingsTest, AnotherProcessThatStartsASetLeavesMemoryAlone) {
  vconf_set_str(kMemory, "one");
  EXPECT_EQ(ReadElsewhere("db/none"), "failed");
  EXPECT_EQ(Get(kMemory), "one");
}

TEST_F(SettingsTest, ListIsInOrderOfKeys) {
  vconf_set_str("memory/z", "3");
  vconf_set_str("db/b", "1");
  vconf_set_str("file/a/b", "2");
  std::string keys;
  for (const Setting& setting : set().settings().list()) keys += setting.key + " ";
  EXPECT_EQ(keys, "db/b file/a/b memory/z ");
}

TEST_F(SettingsTest, RemovedKeyIsGone) {
  vconf_set_str("db/a", "1");
  EXPECT_TRUE(set().settings().Remove("db/a"));
  EXPECT_FALSE(set().settings().Remove("db/a"));
  EXPECT_EQ(Get("db/a"), "none");
}

TEST_F(SettingsTest, ReadersSeeWholeValuesWhileWritersWrite) {
  const std::string values[] = {std::string(3000, 'a'), std::string(10, 'b')};
  vconf_set_str(kMemory, values[0].c_str());
  std::atomic<bool> stop{false};
  std::thread writer([&] {
    for (int i = 0; i < 300; ++i) vconf_set_str(kMemory, values[i % 2].c_str());
    stop = true;
  });
  while (!stop) {
    const std::string value = Get(kMemory);
    ASSERT_TRUE(value == values[0] || value == values[1]) << value.size();
  }
  writer.join();
}

TEST_F(SettingsTest, ValueOfEachTypeIsWrittenAsTheTextSays) {
  Settings& settings = set().settings();
  EXPECT_TRUE(settings.Set("db/int", VCONF_TYPE_INT, "-5"));
  EXPECT_TRUE(settings.Set("db/double", VCONF_TYPE_DOUBLE, "2.5"));
  EXPECT_TRUE(settings.Set("db/bool", VCONF_TYPE_BOOL, "true"));
  EXPECT_TRUE(settings.Set("db/string", VCONF_TYPE_STRING, "x"));
  EXPECT_EQ(settings.Find("db/int")->value, "-5");
  EXPECT_EQ(settings.Find("db/double")->value, "2.5");
  EXPECT_EQ(settings.Find("db/bool")->value, "true");
  EXPECT_EQ(settings.Find("db/string")->value, "x");
  EXPECT_EQ(Get("db/int"), "none") << "it is no string";
  EXPECT_EQ(std::filesystem::file_size(set().paths().settings() / "db/double"), 12u);
}

TEST_F(SettingsTest, TextThatIsNoValueOfItsTypeIsRefused) {
  for (const char* text : {"", "x", "5x", " 5", "99999999999"}) {
    EXPECT_FALSE(set().settings().Set("db/a", VCONF_TYPE_INT, text)) << text;
  }
  EXPECT_FALSE(set().settings().Set("db/a", VCONF_TYPE_DOUBLE, "many"));
  EXPECT_FALSE(set().settings().Set("db/a", VCONF_TYPE_BOOL, "TRUE"));
  EXPECT_FALSE(set().settings().Set("db/a", VCONF_TYPE_DIR, "x"));
  EXPECT_FALSE(set().settings().Find("db/a"));
}

TEST_F(SettingsTest, SettingsOfAFolderAreReadWithoutStartingASet) {
  vconf_set_str("db/a", "kept");
  vconf_set_str(kMemory, "here");
  EventHub events;
  const Settings settings(events, set().paths());
  EXPECT_EQ(settings.GetString("db/a"), "kept");
  EXPECT_EQ(settings.GetString(kMemory), "here");
}

TEST_F(SettingsTest, FileLeftByACrashedProcessOfTheSameIdIsInNobodysWay) {
  const std::filesystem::path folder = set().paths().settings() / "db";
  for (int i = 0; i < 3; ++i) {
    WriteFile(folder / (".~" + std::to_string(getpid()) + "." + std::to_string(i)), "left");
  }
  for (int i = 0; i < 5; ++i) EXPECT_EQ(vconf_set_str("db/a", "x"), 0);
}

}  // namespace
}  // namespace tvset::testing
