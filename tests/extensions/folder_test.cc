// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// A folder as a set lays it out: metadata files, lazy libraries, and what may be wrong with them.

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class FolderTest : public HostTest {
 protected:
  // A metadata file with one entry.
  void WriteMetadata(const std::string& file, const std::string& name, const std::string& library,
                     const std::string& entry_points = "[]") {
    WriteFile(file, R"([{"name": ")" + name + R"(", "lib": ")" + library +
                        R"(", "entry_points": )" + entry_points + "}]");
  }
};

TEST_F(FolderTest, LoadsLibraryWithoutMetadataAtOnce) {
  CopyExtension("named");

  host().LoadFolder(folder());

  EXPECT_THAT(journal(), ElementsAre("loaded"));
  ASSERT_EQ(host().catalogue().size(), 1u);
  EXPECT_TRUE(host().catalogue()[0].extension);
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(FolderTest, LoadsLibraryWithMetadataWhenItsNameIsTouched) {
  CopyExtension("named");
  WriteMetadata("named.json", "test.named", "libnamed.so", R"(["test.two"])");
  host().LoadFolder(folder());
  const auto before = host().catalogue();
  ASSERT_EQ(before.size(), 1u);
  EXPECT_EQ(before[0].name, "test.named");
  EXPECT_THAT(before[0].entry_points, ElementsAre("test.two"));
  EXPECT_FALSE(before[0].extension);
  ASSERT_THAT(journal(), IsEmpty());

  Extension* extension = host().Find("test.named");

  ASSERT_NE(extension, nullptr);
  EXPECT_THAT(journal(), ElementsAre("loaded"));
  EXPECT_TRUE(host().catalogue()[0].extension);
  EXPECT_THAT(host().catalogue()[0].entry_points, ElementsAre("test.two", "test.named.one"));
  EXPECT_EQ(host().Find("test.named"), extension);
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(FolderTest, LoadsLibraryWithMetadataWhenAnEntryPointIsTouched) {
  CopyExtension("named");
  WriteMetadata("named.json", "test.named", "libnamed.so", R"(["test.onlyInMetadata"])");
  host().LoadFolder(folder());

  Extension* extension = host().Find("test.onlyInMetadata");

  ASSERT_NE(extension, nullptr);
  EXPECT_EQ(extension->name(), "test.named");
}

TEST_F(FolderTest, NeverLoadsLazyLibraryThatNobodyTouches) {
  CopyExtension("named");
  WriteMetadata("named.json", "test.named", "libnamed.so");

  host().LoadFolder(folder());
  host().Find("test.other");
  EndHost();

  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FolderTest, TakesAbsoluteLibraryPath) {
  WriteMetadata("echo.json", "test.echo", ExtensionPath("echo").string(), R"(["test.echoAlias"])");

  host().LoadFolder(folder());

  ASSERT_NE(host().Find("test.echo"), nullptr);
  EXPECT_EQ(host().Find("test.echo")->path(), ExtensionPath("echo"));
}

TEST_F(FolderTest, LeavesOtherFilesAlone) {
  CopyExtension("named");
  std::filesystem::rename(folder() / "libnamed.so", folder() / "named.so");
  std::filesystem::create_directory(folder() / "libfolder.so");
  std::filesystem::create_directory(folder() / "folder.json");
  WriteFile("readme.txt", "no library");

  host().LoadFolder(folder());

  EXPECT_THAT(host().catalogue(), IsEmpty());
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(FolderTest, LeavesLinksThatLeadNowhereAlone) {
  std::filesystem::create_symlink("libloop.so", folder() / "libloop.so");
  std::filesystem::create_symlink("nowhere", folder() / "libnowhere.so");
  CopyExtension("named");

  host().LoadFolder(folder());

  EXPECT_NE(host().Find("test.named"), nullptr);
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(FolderTest, LoadsLazyLibraryThatIsAskedForByItsFile) {
  CopyExtension("named");
  WriteMetadata("named.json", "test.named", "libnamed.so", R"(["test.onlyInMetadata"])");
  host().LoadFolder(folder());

  EXPECT_TRUE(host().LoadFile(folder() / "libnamed.so"));

  EXPECT_THAT(journal(), ElementsAre("loaded"));
  EXPECT_EQ(host().Find("test.onlyInMetadata"), host().Find("test.named"));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(FolderTest, WarnsAboutFolderThatCannotBeRead) {
  host().LoadFolder(folder() / "none");

  EXPECT_THAT(warnings(), ElementsAre(AllOf(HasSubstr("/none"), HasSubstr("Check the path"))));
}

TEST_F(FolderTest, LoadsWhatIsGoodNextToBrokenMetadata) {
  CopyExtension("echo");
  CopyExtension("named");
  WriteFile("broken.json", "[{\"name\": \"test.echo\",");
  WriteMetadata("named.json", "test.named", "libnamed.so");

  host().LoadFolder(folder());

  EXPECT_THAT(warnings(), ElementsAre(AllOf(HasSubstr("broken.json"), HasSubstr("no JSON"))));
  EXPECT_NE(host().Find("test.echo"), nullptr);
  EXPECT_NE(host().Find("test.named"), nullptr);
}

TEST_F(FolderTest, DoesNotLoadLibraryWhoseMetadataIsWrong) {
  CopyExtension("named");
  WriteMetadata("named.json", "test..named", "libnamed.so");

  host().LoadFolder(folder());

  EXPECT_THAT(warnings(), ElementsAre(AllOf(HasSubstr("named.json"), HasSubstr("entry 1"),
                                            HasSubstr("\"test..named\""))));
  EXPECT_THAT(host().catalogue(), IsEmpty());
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FolderTest, DoesNotLoadLibraryWhoseMetadataHasABadEntryPoint) {
  CopyExtension("named");
  WriteMetadata("named.json", "test.named", "libnamed.so", R"(["test.two", "b."])");

  host().LoadFolder(folder());

  EXPECT_THAT(warnings(), ElementsAre(AllOf(HasSubstr("named.json"), HasSubstr("entry 1"),
                                            HasSubstr("\"b.\""), HasSubstr("no dotted name"))));
  EXPECT_THAT(host().catalogue(), IsEmpty());
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FolderTest, WarnsAboutMetadataWhoseLibraryIsMissing) {
  WriteMetadata("none.json", "test.none", "libnone.so");

  host().LoadFolder(folder());

  EXPECT_THAT(warnings(), ElementsAre(AllOf(HasSubstr("libnone.so"), HasSubstr("none.json"),
                                            HasSubstr("does not exist"))));
  EXPECT_THAT(host().catalogue(), IsEmpty());
  EXPECT_EQ(host().Find("test.none"), nullptr);
}

TEST_F(FolderTest, RefusesLibraryThatCallsItselfOtherThanItsMetadata) {
  CopyExtension("named");
  WriteMetadata("wrong.json", "test.wrong", "libnamed.so");
  host().LoadFolder(folder());

  EXPECT_EQ(host().Find("test.wrong"), nullptr);

  EXPECT_THAT(warnings(),
              ElementsAre(AllOf(HasSubstr("\"test.named\""), HasSubstr("wrong.json"),
                                HasSubstr("\"test.wrong\""), HasSubstr("correct the entry"))));
  EXPECT_THAT(journal(), ElementsAre("loaded", "shutdown", "unloaded"));
  EXPECT_THAT(host().catalogue(), IsEmpty());
}

TEST_F(FolderTest, WarnsOnceAboutLazyLibraryThatFailsToLoad) {
  CopyExtension("initialize_fails");
  WriteMetadata("fails.json", "test.initializeFails", "libinitialize_fails.so");
  host().LoadFolder(folder());

  EXPECT_EQ(host().Find("test.initializeFails"), nullptr);
  EXPECT_EQ(host().Find("test.initializeFails"), nullptr);

  EXPECT_THAT(journal(), ElementsAre("unloaded"));
  EXPECT_THAT(warnings(), Contains(HasSubstr("returned -1")).Times(1));
}

TEST_F(FolderTest, RefusesLazyLibraryWhoseOwnEntryPointIsTaken) {
  CopyExtension("taken_entry_point");
  WriteMetadata("other.json", "test.other", "libtaken_entry_point.so");
  host().LoadFolder(folder());
  Load("echo", "test.echo");

  EXPECT_EQ(host().Find("test.other"), nullptr);

  EXPECT_THAT(warnings(), ElementsAre(HasSubstr("The entry point \"test.echo\"")));
  EXPECT_NE(host().Find("test.echo"), nullptr);
}

TEST_F(FolderTest, RefusesMetadataWhoseNameIsTaken) {
  CopyExtension("echo");
  CopyExtension("taken_name");
  WriteMetadata("a.json", "test.echo", "libecho.so");
  WriteMetadata("b.json", "test.echo", "libtaken_name.so");

  host().LoadFolder(folder());

  EXPECT_THAT(warnings(),
              ElementsAre(AllOf(HasSubstr("b.json is taken by entry 1 of "), HasSubstr("a.json"))));
  EXPECT_EQ(host().catalogue().size(), 1u);
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FolderTest, RefusesSecondEntryForOneLibrary) {
  CopyExtension("echo");
  WriteMetadata("a.json", "test.echo", "libecho.so");
  WriteMetadata("b.json", "test.another", "./libecho.so");

  host().LoadFolder(folder());

  EXPECT_THAT(warnings(), ElementsAre(AllOf(HasSubstr("b.json"), HasSubstr("earlier entry"))));
  EXPECT_NE(host().Find("test.echo"), nullptr);
  EXPECT_EQ(host().Find("test.another"), nullptr);
}

TEST_F(FolderTest, ShutsDownInReverseOrderOfLoading) {
  CopyExtension("named");
  CopyExtension("lifecycle");
  WriteMetadata("named.json", "test.named", "libnamed.so");
  host().LoadFolder(folder());
  host().Find("test.named");

  EndHost();

  EXPECT_THAT(journal(), ElementsAre("loaded", "shutdown", "unloaded", "shutdown", "unloaded"));
}

}  // namespace
}  // namespace orvane::extensions
