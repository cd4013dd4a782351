// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Loading libraries from files: which are used, which are refused and why.

#include <sys/stat.h>

#include <fstream>

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(HostTest, LoadsLibraryAndKnowsWhatItSetForItself) {
  Extension* echo = Load("echo", "test.echo");

  EXPECT_EQ(echo->name(), "test.echo");
  EXPECT_THAT(echo->api(), HasSubstr("exports.sendSync"));
  EXPECT_THAT(echo->registration().entry_points, ElementsAre("test.echoAlias"));
  EXPECT_EQ(echo->path(), ExtensionPath("echo"));
  EXPECT_GT(echo->handle(), 0);
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(HostTest, LoadsExtensionWrittenInC) {
  auto instance = CreateInstance(Load("plain_c", "test.plainC"));

  EXPECT_EQ(instance->SendSyncMessage("seven.."), "7");
}

TEST_F(HostTest, LoadsLibraryByRelativePathWithoutSearchingForIt) {
  CopyExtension("echo");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder());

  const bool loaded = host().LoadFile("libecho.so");

  std::filesystem::current_path(before);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(host().Find("test.echo")->path(), folder() / "libecho.so");
}

TEST_F(HostTest, RefusesMissingFile) {
  EXPECT_THAT(ErrorOfLoading(folder() / "libnone.so"),
              AllOf(HasSubstr("libnone.so"), HasSubstr("no such file")));
}

TEST_F(HostTest, GivesReasonAsWarningWhenNobodyTakesIt) {
  EXPECT_FALSE(host().LoadFile(folder() / "libnone.so"));

  EXPECT_THAT(warnings(), ElementsAre(HasSubstr("libnone.so")));
}

TEST_F(HostTest, WritesWarningsToStandardErrorWhenNobodyTakesThem) {
  options().warn = nullptr;
  host();
  ::testing::internal::CaptureStderr();

  host().LoadFile(folder() / "libnone.so");

  EXPECT_THAT(::testing::internal::GetCapturedStderr(),
              AllOf(HasSubstr("warning: "), HasSubstr("libnone.so"), EndsWith("\n")));
}

TEST_F(HostTest, SurvivesWarningsThatThrow) {
  options().warn = [](const std::string&) { throw std::runtime_error("the log is full"); };

  EXPECT_FALSE(host().LoadFile(folder() / "libnone.so"));
}

TEST_F(HostTest, RefusesFolderAndPipeInPlaceOfLibrary) {
  const auto pipe = folder() / "libpipe.so";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);

  EXPECT_THAT(ErrorOfLoading(folder()), HasSubstr("it is no file"));
  EXPECT_THAT(ErrorOfLoading(pipe), HasSubstr("it is no file"));
}

TEST_F(HostTest, RefusesFileThatIsNoSharedLibrary) {
  WriteFile("libtext.so",
            "This is a text that somebody has given the name of a library, and a long one.");
  WriteFile("libempty.so", "");

  EXPECT_THAT(ErrorOfLoading(folder() / "libtext.so"), HasSubstr("no ELF shared library"));
  EXPECT_THAT(ErrorOfLoading(folder() / "libempty.so"), HasSubstr("no ELF shared library"));
}

TEST_F(HostTest, RefusesLibraryWhoseEndIsMissing) {
  CopyExtension("echo");
  const auto library = folder() / "libecho.so";

  // Within the code, within the first page, within the program headers.
  for (const uintmax_t size : {4200, 1000, 70}) {
    std::filesystem::resize_file(library, size);
    EXPECT_THAT(ErrorOfLoading(library), HasSubstr("its end is missing")) << size;
  }
}

TEST_F(HostTest, PassesOnWhatTheLoaderSaysAboutCorruptLibrary) {
  CopyExtension("echo");
  {
    std::fstream file(folder() / "libecho.so", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(16);  // the object's type and machine
    file.write("\xff\xff\xff\xff", 4);
  }

  EXPECT_THAT(ErrorOfLoading(folder() / "libecho.so"),
              AllOf(HasSubstr("Cannot load "), HasSubstr("libecho.so: ")));
}

TEST_F(HostTest, PassesOnWhatTheLoaderSaysAboutMissingSymbol) {
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("undefined_symbol")),
              HasSubstr("OrvaneTestFunctionThatNobodyDefines"));
}

TEST_F(HostTest, RefusesLibraryWithoutInitialize) {
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("no_initialize")),
              AllOf(HasSubstr("libno_initialize.so"), HasSubstr("exports no XW_Initialize")));
}

TEST_F(HostTest, UnloadsLibraryWhoseInitializeFails) {
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("initialize_fails")), HasSubstr("returned -1"));

  EXPECT_THAT(journal(), ElementsAre("unloaded"));
  EXPECT_EQ(host().Find("test.initializeFails"), nullptr);
  EXPECT_THAT(warnings(), ElementsAre(HasSubstr("SetExtensionName: extension handle")));
}

TEST_F(HostTest, UnloadsLibraryWhoseInitializeThrows) {
  EXPECT_THAT(ErrorOfLoading(ExtensionPath("initialize_throws")),
              HasSubstr("thrown in XW_Initialize"));

  EXPECT_THAT(journal(), ElementsAre("unloaded"));
}

TEST_F(HostTest, RefusesLibraryThatIsLoadedAlready) {
  Load("named", "test.named");
  std::filesystem::create_symlink(ExtensionPath("named"), folder() / "libsame.so");

  EXPECT_THAT(ErrorOfLoading(ExtensionPath("named")), HasSubstr("loaded already"));
  EXPECT_THAT(ErrorOfLoading(folder() / "libsame.so"), HasSubstr("loaded already"));

  EXPECT_NE(host().Find("test.named"), nullptr);
}

TEST_F(HostTest, RefusesLibraryThatAnotherHostUses) {
  Load("echo", "test.echo");
  ExtensionHost other(options());
  std::string error;

  EXPECT_FALSE(other.LoadFile(ExtensionPath("echo"), &error));
  EndHost();
  EXPECT_TRUE(other.LoadFile(ExtensionPath("echo"), &error)) << error;
}

TEST_F(HostTest, CallsShutdownBeforeItUnloads) {
  Load("named", "test.named");

  EndHost();

  EXPECT_THAT(journal(), ElementsAre("loaded", "shutdown", "unloaded"));
}

TEST_F(HostTest, AnswersUnknownInterfacesWithNull) {
  Load("unknown_interface", "test.unknownInterface");

  EXPECT_THAT(warnings(), ElementsAre(HasSubstr("\"XW_CoreInterface_2\""), HasSubstr("\"\""),
                                      HasSubstr("known are XW_CoreInterface_1, ")));
}

TEST_F(HostTest, ToleratesNullWhereverTheInterfaceTakesPointer) {
  auto instance = CreateInstance(Load("null_texts", "test.nullTexts"));

  instance->PostMessage("go");
  const std::string reply = instance->SendSyncMessage("go");

  EXPECT_EQ(reply, "");
  EXPECT_THAT(page().messages(), IsEmpty());
  EXPECT_THAT(page().binary_messages(), ElementsAre(""));
  EXPECT_EQ(warnings().size(), 10u) << ::testing::PrintToString(warnings());
}

}  // namespace
}  // namespace orvane::extensions
