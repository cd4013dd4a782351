// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <atomic>
#include <future>
#include <new>
#include <thread>

#include "common/create_extension.h"
#include "common/extension_detail.h"
#include "common/task-queue.h"
#include "library_fixture.h"
#include "orvane/orvane_api.h"
#include "orvane/orvane_extension.h"
#include "tvset/log_format.h"

namespace orvane::test {
namespace {

using common::Extension;
using ::testing::IsNull;
using ::testing::NotNull;

// The library before the host knows it.
class GlueTest : public SetFixture {
 protected:
  std::vector<std::string> PluginTexts() const {
    std::vector<std::string> texts;
    for (const tvset::LogLine& line : set().log().lines()) {
      EXPECT_EQ(line.tag, "WEBAPI_PLUGINS");
      texts.push_back(std::string(1, tvset::PriorityLetter(line.priority)) + " " + line.text);
    }
    return texts;
  }
  static std::string Address(const void* pointer) {
    char text[32];
    snprintf(text, sizeof(text), "%p", pointer);
    return text;
  }

  SystemFakes system_;
  FakeHost host_;
};

TEST_F(GlueTest, NamesItsObjectAndHandsItsScriptOver) {
  EXPECT_EQ(host_.Initialize(XW_Initialize), XW_OK);
  EXPECT_EQ(host_.extension_name(), "dravelt.orvane");
  EXPECT_EQ(host_.script(), kSource_orvane_api);
  host_.ShutDown();
}

TEST_F(GlueTest, LogsInitialisationAndShutdown) {
  host_.Initialize(XW_Initialize);
  const std::string created = Address(common::GetCurrentExtension());
  host_.ShutDown();
  EXPECT_THAT(PluginTexts(),
              ::testing::ElementsAre(
                  "D logger.h: ScopeLogger > XW_Extension.cc: XW_Initialize(37) > Enter ",
                  "E XW_Extension.cc: XW_Initialize(43) > Extension::Detail::XW_Initialize Created "
                  "Extension - " +
                      created,
                  "D logger.h: ~ScopeLogger(288) > XW_Extension.cc: XW_Initialize > Exit",
                  "D logger.h: ScopeLogger > XW_Extension.cc: OnShutdown(60) > Enter ",
                  "E XW_Extension.cc: OnShutdown(61) > Extension::Detail::OnShutdown Delete "
                  "extension - " +
                      created,
                  "D logger.h: ~ScopeLogger(288) > XW_Extension.cc: OnShutdown > Exit"));
}

TEST_F(GlueTest, GivesOutTheLiveExtension) {
  host_.Initialize(XW_Initialize);
  EXPECT_THAT(dynamic_cast<OrvaneExtension*>(common::GetCurrentExtension()), NotNull());
  host_.ShutDown();
}

TEST_F(GlueTest, ShutdownWithoutAnExtensionOnlyLogs) {
  Extension::Detail::OnShutdown(1);
  host_.Initialize(XW_Initialize);
  host_.ShutDown();
  ClearLog();
  host_.ShutDown();
  EXPECT_THAT(PluginTexts(),
              ::testing::ElementsAre(
                  "D logger.h: ScopeLogger > XW_Extension.cc: OnShutdown(60) > Enter ",
                  "E XW_Extension.cc: OnShutdown(61) > Extension::Detail::OnShutdown Delete "
                  "extension - (nil)",
                  "D logger.h: ~ScopeLogger(288) > XW_Extension.cc: OnShutdown > Exit"));
}

TEST_F(GlueTest, BindsNoInstanceWithoutAnExtension) {
  host_.Initialize(XW_Initialize);
  host_.ShutDown();
  ClearLog();
  const XW_Instance instance = host_.Create();
  EXPECT_THAT(host_.data(instance), IsNull());
  EXPECT_THAT(PluginTexts(),
              ::testing::ElementsAre(
                  "D logger.h: ScopeLogger > XW_Extension.cc: OnInstanceCreated(48) > Enter ",
                  "D logger.h: ~ScopeLogger(288) > XW_Extension.cc: OnInstanceCreated > Exit"));
  host_.Destroy(instance);
}

TEST_F(GlueTest, InstancesOutliveTheExtension) {
  host_.Initialize(XW_Initialize);
  const XW_Instance instance = host_.Create();
  host_.ShutDown();
  EXPECT_EQ(host_.SendSync(instance, R"({"cmd":"OrvaneManager_getVersion","args":{}})"),
            R"({"result":"3.9","status":"success"})");
  host_.Destroy(instance);
}

TEST_F(GlueTest, CanBeInitialisedAgainAfterAShutdown) {
  host_.Initialize(XW_Initialize);
  host_.ShutDown();
  EXPECT_EQ(host_.Initialize(XW_Initialize), XW_OK);
  const XW_Instance instance = host_.Create();
  EXPECT_THAT(host_.data(instance), NotNull());
  host_.Destroy(instance);
  host_.ShutDown();
}

// The host unloads the library next, with the code that the worker may still be in.
TEST_F(GlueTest, ShutdownWaitsForTheTaskThatRuns) {
  host_.Initialize(XW_Initialize);
  std::promise<void> started;
  std::promise<void> go;
  std::atomic<bool> finalised{false};
  common::TaskQueue::GetInstance().Queue<int>(
      [&started](const std::shared_ptr<int>& /*data*/) { started.set_value(); },
      [&go](const std::shared_ptr<int>& /*data*/) { go.get_future().wait(); },
      [&finalised] { finalised = true; }, nullptr);
  started.get_future().wait();

  std::thread releaser([&go] { go.set_value(); });
  host_.ShutDown();

  EXPECT_TRUE(finalised);
  releaser.join();
}

TEST_F(GlueTest, IsNotUsedByAHostWithoutMessages) {
  host_.Withhold(XW_MESSAGING_INTERFACE);
  EXPECT_EQ(host_.Initialize(XW_Initialize), XW_ERROR);
  Extension::Detail::OnShutdown(1);
}

// Outside an initialisation the framework refuses the name; nothing is leaked then.
TEST_F(GlueTest, PassesAFailureToNameTheExtensionOn) {
  EXPECT_THROW(CreateExtension(), std::logic_error);
}

TEST_F(GlueTest, WritesLogLinesAfterALogThatFails) {
  Fail("__dlog_print", -1, tvset::FaultMode::kAlways);
  EXPECT_EQ(host_.Initialize(XW_Initialize), XW_OK);
  host_.ShutDown();
  EXPECT_THAT(PluginTexts(), ::testing::IsEmpty());
}

TEST_F(GlueTest, AnInstanceThatCannotBeMadeLeavesNothingBehind) {
  host_.Initialize(XW_Initialize);
  Extension* const extension = common::GetCurrentExtension();
  int failures = 0;
  for (int allocation = 1;; ++allocation) {
    common::Instance* instance = nullptr;
    try {
      const FailingAllocation fault(allocation);
      instance = extension->CreateInstance();
    } catch (const std::bad_alloc&) {
      ++failures;
      continue;
    }
    delete instance;
    break;
  }
  EXPECT_GT(failures, 13);
  host_.ShutDown();
}

}  // namespace
}  // namespace orvane::test
