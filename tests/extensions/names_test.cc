// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Names and entry points: what they may be, and who gets them.

#include "extensions/catalogue.h"
#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(DottedName, AcceptsIdentifiersJoinedByDots) {
  for (const char* name : {"a", "dravelt.orvane", "_a.$b.C9", "a.b.c.d"})
    EXPECT_TRUE(IsDottedName(name)) << name;
}

TEST(DottedName, RejectsEverythingElse) {
  for (const char* name :
       {"", ".", "a.", ".a", "a..b", "1a", "a.1b", "a-b", "a b", "a.b ", "ä", "a/b", "a[0]"}) {
    EXPECT_FALSE(IsDottedName(name)) << name;
  }
  EXPECT_FALSE(IsDottedName(std::string_view("a\0b", 3)));
}

TEST_F(HostTest, FindsExtensionByNameAndByEntryPoint) {
  Extension* named = Load("named", "test.named");

  EXPECT_EQ(host().Find("test.named.one"), named);
  EXPECT_EQ(host().Find("test.two"), named);
  EXPECT_EQ(host().Find("test"), nullptr);
  EXPECT_EQ(host().Find("test.named.on"), nullptr);
}

TEST_F(HostTest, ListsLoadedExtensionsInOrder) {
  Load("named", "test.named");
  Load("echo", "test.echo");

  const auto catalogue = host().catalogue();

  ASSERT_EQ(catalogue.size(), 2u);
  EXPECT_EQ(catalogue[0].name, "test.named");
  EXPECT_THAT(catalogue[0].entry_points, ElementsAre("test.named.one", "test.two"));
  EXPECT_TRUE(catalogue[0].extension);
  EXPECT_EQ(catalogue[1].name, "test.echo");
}

TEST_F(HostTest, RefusesLibraryWithoutName) {
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("nameless")),
              AllOf(HasSubstr("libnameless.so has no name"), HasSubstr("SetExtensionName")));
  EXPECT_THAT(journal(), ElementsAre("loaded", "shutdown", "unloaded"));
}

TEST_F(HostTest, RefusesLibraryWithBadName) {
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("bad_name")),
              AllOf(HasSubstr("\"test..bad-name\""), HasSubstr("no dotted name")));
  EXPECT_THAT(journal(), ElementsAre("loaded", "shutdown", "unloaded"));
  EXPECT_THAT(host().catalogue(), IsEmpty());
}

TEST_F(HostTest, RefusesLibraryWithBadEntryPoint) {
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("bad_entry_point")),
              AllOf(HasSubstr("\"test.1st\""), HasSubstr("no dotted name")));
  EXPECT_EQ(host().Find("test.good"), nullptr);
}

TEST_F(HostTest, RefusesLibraryWhoseNameIsTaken) {
  Extension* echo = Load("echo", "test.echo");

  EXPECT_THAT(ErrorOfLoading(ExtensionPath("taken_name")),
              AllOf(HasSubstr("libtaken_name.so is taken by"), HasSubstr("libecho.so")));
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("taken_by_entry_point")), HasSubstr("is taken by"));

  EXPECT_EQ(host().Find("test.echo"), echo);
  EXPECT_EQ(host().Find("test.echoAlias"), echo);
}

TEST_F(HostTest, RefusesLibraryWhoseEntryPointIsTakenAndLeavesItsOtherNamesFree) {
  Load("echo", "test.echo");

  EXPECT_THAT(ErrorOfLoading(ExtensionPath("taken_entry_point")),
              AllOf(HasSubstr("The entry point \"test.echo\""), HasSubstr("is taken by")));

  EXPECT_EQ(host().Find("test.other"), nullptr);
  EXPECT_EQ(host().Find("test.free"), nullptr);
  EXPECT_EQ(host().catalogue().size(), 1u);
}

}  // namespace
}  // namespace orvane::extensions
