// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Posted messages, runtime variables and permissions.

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(HostTest, CarriesTextBothWays) {
  auto instance = CreateInstance(Load("echo", "test.echo"));

  instance->PostMessage("hello, Grüße");

  EXPECT_THAT(page().messages(), ElementsAre("hello, Grüße"));
}

TEST_F(HostTest, CarriesBinaryBothWays) {
  auto instance = CreateInstance(Load("echo", "test.echo"));
  const std::string bytes("\0\x01\xff\0", 4);

  instance->PostBinaryMessage(bytes);
  instance->PostBinaryMessage({});

  EXPECT_THAT(page().binary_messages(), ElementsAre(bytes, ""));
}

TEST_F(HostTest, KeepsInstancesOfSeveralPagesApart) {
  Extension* echo = Load("echo", "test.echo");
  Recorder other_page;
  auto instance = CreateInstance(echo);
  auto other = echo->CreateInstance(&other_page);

  other->PostMessage("for the other");

  EXPECT_THAT(page().messages(), IsEmpty());
  EXPECT_THAT(other_page.messages(), ElementsAre("for the other"));
  EXPECT_NE(instance->handle(), other->handle());
}

TEST_F(HostTest, WarnsAboutMessagesThatNobodyHandles) {
  auto instance = CreateInstance(Load("null_callbacks", "test.nullCallbacks"));

  instance->PostMessage("lost text");
  instance->PostBinaryMessage("lost");

  EXPECT_THAT(warnings(),
              ElementsAre(AllOf(HasSubstr("test.nullCallbacks"), HasSubstr("lost text")),
                          HasSubstr("4 bytes")));
}

TEST_F(HostTest, WarnsWhenHandlerThrows) {
  auto instance = CreateInstance(Load("throwing", "test.throwing"));

  instance->PostMessage("text");
  instance->PostBinaryMessage("bytes");

  EXPECT_THAT(warnings(),
              ElementsAre(AllOf(HasSubstr("thrown in a handler"), HasSubstr("test.throwing")),
                          HasSubstr("thrown in a binary handler")));
}

TEST_F(HostTest, WarnsWhenThePageFailsToTakeMessage) {
  auto instance = CreateInstance(Load("echo", "test.echo"));
  page().on_message = [](std::string_view) { throw std::runtime_error("the page is full"); };

  instance->PostMessage("text");

  EXPECT_THAT(warnings(),
              ElementsAre(AllOf(HasSubstr("PostMessage"), HasSubstr("the page is full"))));
}

class RuntimeVariables : public HostTest {
 protected:
  // In a buffer of that size, after XW_Initialize.
  std::string Read(const std::string& key, size_t size) {
    Extension* extension = host().Find("test.runtimeVariables");
    if (extension == nullptr) extension = Load("runtime_variables", "test.runtimeVariables");
    return CreateInstance(extension)->SendSyncMessage(key + " " + std::to_string(size));
  }
};

TEST_F(RuntimeVariables, AreKnownWhileInitializeRuns) {
  EXPECT_EQ(Read("early", 1),
            "\"test.app\" \"" + ExtensionPath("runtime_variables").string() + "\" ");
}

TEST_F(RuntimeVariables, AreKnownLaterToo) { EXPECT_EQ(Read("app_id", 64), "\"test.app\""); }

TEST_F(RuntimeVariables, AreJsonTexts) {
  options().app_id = "a\"b\\c\nd/e";

  EXPECT_EQ(Read("app_id", 64), R"("a\"b\\c\nd/e")");
}

TEST_F(RuntimeVariables, AreCutToTheBufferAndTerminated) {
  EXPECT_EQ(Read("app_id", 11), "\"test.app\"");
  EXPECT_EQ(Read("app_id", 10), "\"test.app");
  EXPECT_EQ(Read("app_id", 2), "\"");
  EXPECT_EQ(Read("app_id", 1), "");
  EXPECT_EQ(Read("app_id", 0), "no buffer");
}

TEST_F(RuntimeVariables, AreEmptyForUnknownKeys) {
  EXPECT_EQ(Read("App_id", 64), "");
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(HostTest, AsksTheAccessCheckAboutAnApi) {
  options().access_check = [](const std::string& api) { return api == "allowed"; };
  auto instance = CreateInstance(Load("permissions", "test.permissions"));

  EXPECT_EQ(instance->SendSyncMessage("allowed"), "0");
  EXPECT_EQ(instance->SendSyncMessage("other"), "-1");
}

TEST_F(HostTest, GrantsEveryApiWithoutAccessCheck) {
  auto instance = CreateInstance(Load("permissions", "test.permissions"));

  EXPECT_EQ(instance->SendSyncMessage("anything"), "0");
}

TEST_F(HostTest, RefusesAccessWhenTheCheckThrows) {
  options().access_check = [](const std::string&) -> bool {
    throw std::runtime_error("no answer");
  };
  auto instance = CreateInstance(Load("permissions", "test.permissions"));

  EXPECT_EQ(instance->SendSyncMessage("anything"), "-1");
  EXPECT_THAT(warnings(),
              ElementsAre(AllOf(HasSubstr("CheckAPIAccessControl"), HasSubstr("no answer"))));
}

TEST_F(HostTest, StoresPermissionTables) {
  EXPECT_THAT(Load("permissions", "test.permissions")->registration().permissions,
              ElementsAre("first table", "second table"));
}

}  // namespace
}  // namespace orvane::extensions
