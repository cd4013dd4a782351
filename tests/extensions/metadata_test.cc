// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The reader of metadata files, and the texts around it.

#include "extensions/metadata.h"

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// The only problem of a file with one entry that cannot be used.
std::string ProblemOf(const std::string& entry) {
  const Metadata metadata = ParseMetadata("[" + entry + "]");
  EXPECT_THAT(metadata.entries, IsEmpty());
  EXPECT_EQ(metadata.problems.size(), 1u);
  return metadata.problems.empty() ? "" : metadata.problems[0];
}

TEST(ExtensionMetadata, ReadsEntriesInOrder) {
  const Metadata metadata = ParseMetadata(R"([
    {"name": "a.b", "lib": "liba.so", "entry_points": ["a.c", "a.d"]},
    {"name": "b", "lib": "/usr/lib/libb.so", "entry_points": [], "further": {"things": [1]}}])");

  ASSERT_EQ(metadata.entries.size(), 2u);
  EXPECT_EQ(metadata.entries[0].name, "a.b");
  EXPECT_EQ(metadata.entries[0].library, "liba.so");
  EXPECT_THAT(metadata.entries[0].entry_points, ElementsAre("a.c", "a.d"));
  EXPECT_EQ(metadata.entries[1].number, 2u);
  EXPECT_EQ(metadata.entries[1].library, "/usr/lib/libb.so");
  EXPECT_THAT(metadata.problems, IsEmpty());
}

TEST(ExtensionMetadata, AcceptsEmptyArray) {
  EXPECT_THAT(ParseMetadata(" [ ] \n").problems, IsEmpty());
}

TEST(ExtensionMetadata, RejectsTextThatIsNoJson) {
  for (const char* text : {"", "[", "[}", "[] x", "nul", "[1e999]", "[\"a", "{\"a\":1"}) {
    const Metadata metadata = ParseMetadata(text);
    EXPECT_THAT(metadata.problems, ElementsAre(HasSubstr("no JSON"))) << text;
  }
}

TEST(ExtensionMetadata, RejectsJsonThatIsNoArray) {
  for (const char* text : {"{}", "1", "null", "\"a\"", "\"\\ud800\""}) {
    EXPECT_THAT(ParseMetadata(text).problems, ElementsAre(HasSubstr("no array"))) << text;
  }
}

TEST(ExtensionMetadata, RejectsDeepNestingWithoutRecursion) {
  std::string arrays(500000, '[');
  std::string objects;
  for (int i = 0; i < 150000; ++i) objects += R"({"":)";

  EXPECT_THAT(ParseMetadata(arrays).problems, ElementsAre(HasSubstr("no JSON")));
  EXPECT_THAT(ParseMetadata("[" + objects).problems, ElementsAre(HasSubstr("no JSON")));
}

TEST(ExtensionMetadata, NamesTheFieldThatIsWrong) {
  EXPECT_THAT(
      ProblemOf("7"),
      HasSubstr("entry 1 is not used: the entry has to be a JSON object, in braces, but is 7"));
  EXPECT_THAT(ProblemOf(R"({"name": "a", "entry_points": []})"),
              HasSubstr("\"lib\" of the entry has to be a string, but is not given"));
  EXPECT_THAT(ProblemOf(R"({"name": "a", "lib": 1, "entry_points": []})"),
              HasSubstr("\"lib\" of the entry has to be a string, but is 1"));
  EXPECT_THAT(ProblemOf(R"({"name": "a", "lib": "", "entry_points": []})"),
              HasSubstr("\"lib\" is no file name"));
  EXPECT_THAT(ProblemOf(R"({"name": "a", "lib": "a\u0000b", "entry_points": []})"),
              HasSubstr("\"lib\" is no file name"));
  EXPECT_THAT(ProblemOf(R"({"lib": "a.so", "entry_points": []})"),
              HasSubstr("\"name\" of the entry has to be a string, but is not given"));
  EXPECT_THAT(ProblemOf(R"({"name": [], "lib": "a.so", "entry_points": []})"),
              HasSubstr("\"name\" of the entry has to be a string, but is []"));
  EXPECT_THAT(ProblemOf(R"({"name": "a", "lib": "a.so"})"),
              HasSubstr("\"entry_points\" of the entry has to be an array, but is not given"));
  EXPECT_THAT(ProblemOf(R"({"name": "a", "lib": "a.so", "entry_points": "b"})"),
              HasSubstr("\"entry_points\" of the entry has to be an array, but is \"b\""));
  EXPECT_THAT(ProblemOf(R"({"name": "a", "lib": "a.so", "entry_points": [1]})"),
              HasSubstr("an entry of \"entry_points\" of the entry has to be a string, but is 1"));
}

TEST(ExtensionMetadata, KeepsGoodEntriesNextToBadOnes) {
  const Metadata metadata = ParseMetadata(R"([
    {"name": 1, "lib": "bad.so", "entry_points": []},
    {"name": "good", "lib": "good.so", "entry_points": []}])");

  ASSERT_EQ(metadata.entries.size(), 1u);
  EXPECT_EQ(metadata.entries[0].name, "good");
  EXPECT_THAT(metadata.refused_libraries, ElementsAre("bad.so"));
  EXPECT_THAT(metadata.problems, ElementsAre(HasSubstr("entry 1")));
}

TEST_F(HostTest, RejectsMetadataFileThatIsTooLong) {
  WriteFile("long.json", std::string((1 << 20) + 1, ' '));
  WriteFile("longest.json", "[]" + std::string((1 << 20) - 2, ' '));

  EXPECT_THAT(ReadMetadataFile(folder() / "long.json").problems, ElementsAre(HasSubstr("1 MiB")));
  EXPECT_THAT(ReadMetadataFile(folder() / "longest.json").problems, IsEmpty());
  EXPECT_THAT(ReadMetadataFile(folder() / "none.json").problems,
              ElementsAre(HasSubstr("cannot be read")));
}

}  // namespace
}  // namespace orvane::extensions
