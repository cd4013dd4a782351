// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/extension.h"

#include <pthread.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>

#include "fake_host.h"
#include "set_fixture.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::NotNull;

// What each test makes of an extension; the callbacks of the C interface carry no context.
struct Behaviour {
  std::function<int32_t()> initialize;
  std::function<common::Instance*()> create_instance;
};
Behaviour* g_behaviour = nullptr;

class EchoInstance : public common::Instance {
 public:
  explicit EchoInstance(bool* destroyed = nullptr) : destroyed_(destroyed) {}
  ~EchoInstance() override {
    if (destroyed_ != nullptr) {
      *destroyed_ = true;
    }
  }

  void HandleMessage(const char* message) override { PostMessage(this, message); }
  void HandleSyncMessage(const char* message) override {
    if (std::string(message) == "throw") {
      throw std::runtime_error("an instance's own");
    }
    if (std::string(message) == "throw a number") {
      throw 42;
    }
    SendSyncReply(message);
  }
  using Instance::SendSyncReply;

 private:
  bool* destroyed_;
};

class TestExtension : public common::Extension {
 public:
  common::Instance* CreateInstance() override { return nullptr; }
};

int32_t Initialize(XW_Extension /*extension*/, XW_GetInterface /*lookup*/) {
  return g_behaviour->initialize();
}

void OnCreated(XW_Instance handle) {
  common::Extension::OnInstanceCreated(handle, g_behaviour->create_instance());
}

void OnShutdown(XW_Extension /*extension*/) {}

int32_t EntryPoint(XW_Extension extension, XW_GetInterface lookup) {
  return common::Extension::XW_Initialize(extension, lookup, Initialize, OnCreated, OnShutdown);
}

class ExtensionTest : public SetFixture {
 protected:
  ExtensionTest() {
    g_behaviour = &behaviour_;
    behaviour_.initialize = [this] {
      extension_ = std::make_unique<TestExtension>();
      extension_->SetExtensionName("test.echo");
      return XW_OK;
    };
    behaviour_.create_instance = [] { return new EchoInstance; };
  }
  ~ExtensionTest() override { g_behaviour = nullptr; }

  FakeHost host_;
  Behaviour behaviour_;
  std::unique_ptr<TestExtension> extension_;
};

TEST_F(ExtensionTest, HandsNameScriptAndEntryPointsToTheHost) {
  behaviour_.initialize = [this] {
    extension_ = std::make_unique<TestExtension>();
    extension_->SetExtensionName("test.echo");
    extension_->SetJavaScriptAPI("exports.answer = 42;");
    const char* entry_points[] = {"test.one", "test.two", nullptr};
    extension_->SetExtraJSEntryPoints(entry_points);
    return XW_OK;
  };

  EXPECT_EQ(host_.Initialize(EntryPoint), XW_OK);

  EXPECT_EQ(host_.extension_name(), "test.echo");
  EXPECT_EQ(host_.script(), "exports.answer = 42;");
  EXPECT_THAT(host_.entry_points(), ElementsAre("test.one", "test.two"));
}

TEST_F(ExtensionTest, FailsWithoutTheTablesThatCarryMessages) {
  for (const char* name :
       {XW_CORE_INTERFACE, XW_MESSAGING_INTERFACE, XW_INTERNAL_SYNC_MESSAGING_INTERFACE}) {
    bool initialized = false;
    behaviour_.initialize = [&initialized] {
      initialized = true;
      return XW_OK;
    };
    host_.Withhold(name);
    ClearLog();

    EXPECT_EQ(host_.Initialize(EntryPoint), XW_ERROR) << name;

    EXPECT_FALSE(initialized) << name;
    ASSERT_EQ(set().log().lines().size(), 1U);
    EXPECT_THAT(set().log().lines()[0].text, HasSubstr("The host lacks the core or a messaging"));
  }
}

TEST_F(ExtensionTest, WorksWithoutTheTablesThatItCanDoWithout) {
  host_.Withhold(XW_INTERNAL_ENTRY_POINTS_INTERFACE);
  host_.Withhold(XW_INTERNAL_RUNTIME_INTERFACE);
  behaviour_.initialize = [this] {
    extension_ = std::make_unique<TestExtension>();
    const char* entry_points[] = {"test.one", nullptr};
    extension_->SetExtraJSEntryPoints(entry_points);
    EXPECT_EQ(extension_->GetRuntimeVariable("app_id"), "");
    return XW_OK;
  };

  EXPECT_EQ(host_.Initialize(EntryPoint), XW_OK);
  EXPECT_THAT(host_.entry_points(), IsEmpty());
}

TEST_F(ExtensionTest, ReturnsWhatTheLibrarysInitialisationReturns) {
  behaviour_.initialize = [] { return XW_ERROR; };
  EXPECT_EQ(host_.Initialize(EntryPoint), XW_ERROR);
}

TEST_F(ExtensionTest, TurnsAnExceptionOfTheInitialisationIntoAnError) {
  behaviour_.initialize = []() -> int32_t { throw std::runtime_error("no memory for a script"); };

  EXPECT_EQ(host_.Initialize(EntryPoint), XW_ERROR);

  ASSERT_EQ(set().log().lines().size(), 1U);
  EXPECT_THAT(set().log().lines()[0].text, HasSubstr("XW_Initialize"));
  EXPECT_THAT(set().log().lines()[0].text, HasSubstr("no memory for a script"));
}

TEST_F(ExtensionTest, RefusesToBeNamedOutsideItsInitialisation) {
  host_.Initialize(EntryPoint);
  const char* entry_points[] = {nullptr};

  EXPECT_THROW(extension_->SetExtensionName("test.other"), std::logic_error);
  EXPECT_THROW(extension_->SetJavaScriptAPI(""), std::logic_error);
  EXPECT_THROW(extension_->SetExtraJSEntryPoints(entry_points), std::logic_error);
  EXPECT_EQ(host_.extension_name(), "test.echo");
}

TEST_F(ExtensionTest, ReadsRuntimeVariablesWithoutTheirQuotes) {
  host_.SetVariable("app_id", R"("aBcDe01234.\"Player\"")");
  host_.SetVariable("number", "12");
  host_.SetVariable("broken", R"("cut)");
  host_.SetVariable("huge", "1e999");
  host_.Initialize(EntryPoint);

  EXPECT_EQ(extension_->GetRuntimeVariable("app_id"), "aBcDe01234.\"Player\"");
  EXPECT_EQ(extension_->GetRuntimeVariable("unknown"), "");
  EXPECT_EQ(extension_->GetRuntimeVariable("number"), "");
  EXPECT_EQ(extension_->GetRuntimeVariable("broken"), "");
  EXPECT_EQ(extension_->GetRuntimeVariable("huge"), "");
}

// A host may run extensions on a thread whose stack is small.
TEST_F(ExtensionTest, ReadsADeepRuntimeVariableOnASmallStack) {
  constexpr size_t kStack = size_t{192} << 10;
  std::string objects;
  while (objects.size() < 4000) objects += R"({"":)";
  host_.SetVariable("deep", objects);
  host_.Initialize(EntryPoint);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kStack);
  pthread_t thread{};
  const auto read = [](void* extension) -> void* {
    EXPECT_EQ(static_cast<TestExtension*>(extension)->GetRuntimeVariable("deep"), "");
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, read, extension_.get()), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST_F(ExtensionTest, DeletesAnInstanceWhenItsHandleIsDestroyed) {
  bool destroyed = false;
  behaviour_.create_instance = [&destroyed] { return new EchoInstance(&destroyed); };
  host_.Initialize(EntryPoint);

  const XW_Instance instance = host_.Create();
  EXPECT_THAT(host_.data(instance), NotNull());
  EXPECT_FALSE(destroyed);
  host_.Destroy(instance);
  EXPECT_TRUE(destroyed);
}

TEST_F(ExtensionTest, PassesMessagesBothWays) {
  host_.Initialize(EntryPoint);
  const XW_Instance first = host_.Create();
  const XW_Instance second = host_.Create();

  host_.Send(second, "posted");
  EXPECT_EQ(host_.SendSync(first, "asked"), "asked");

  EXPECT_EQ(host_.AwaitPost(second), "posted");
  EXPECT_THAT(host_.posts(first), IsEmpty());
  host_.Destroy(first);
  host_.Destroy(second);
}

TEST_F(ExtensionTest, StopsExceptionsOfMessageHandlersBeforeTheHost) {
  host_.Initialize(EntryPoint);
  const XW_Instance instance = host_.Create();
  ClearLog();

  EXPECT_EQ(host_.SendSync(instance, "throw"), "");
  EXPECT_EQ(host_.SendSync(instance, "throw a number"), "");

  ASSERT_EQ(set().log().lines().size(), 2U);
  EXPECT_THAT(set().log().lines()[0].text, HasSubstr("an instance's own"));
  EXPECT_THAT(set().log().lines()[1].text, HasSubstr("an exception of unknown type"));
  EXPECT_EQ(host_.SendSync(instance, "still there"), "still there");
  host_.Destroy(instance);
}

TEST_F(ExtensionTest, IgnoresMessagesToAHandleWithoutAnInstance) {
  behaviour_.create_instance = [] { return nullptr; };
  host_.Initialize(EntryPoint);
  const XW_Instance instance = host_.Create();

  EXPECT_THAT(host_.data(instance), IsNull());
  EXPECT_EQ(host_.SendSync(instance, "asked"), "");
  host_.Send(instance, "told");
  EXPECT_THAT(host_.posts(instance), IsEmpty());
  host_.Destroy(instance);
}

TEST_F(ExtensionTest, KeepsAnUnboundInstanceSilent) {
  host_.Initialize(EntryPoint);
  EchoInstance unbound;

  common::Instance::PostMessage(&unbound, "lost");
  common::Instance::PostMessage(nullptr, "lost");
  unbound.SendSyncReply("lost");

  EXPECT_EQ(host_.dropped_posts(), 0);
}

TEST_F(ExtensionTest, LetsAnInstanceThatHandlesNothingBeSentAnything) {
  behaviour_.create_instance = [] { return new common::Instance; };
  host_.Initialize(EntryPoint);
  const XW_Instance instance = host_.Create();

  host_.Send(instance, "told");
  EXPECT_EQ(host_.SendSync(instance, "asked"), "");
  host_.Destroy(instance);
}

TEST_F(ExtensionTest, CanBeInitialisedAgain) {
  host_.Initialize(EntryPoint);
  extension_.reset();

  EXPECT_EQ(host_.Initialize(EntryPoint), XW_OK);

  const XW_Instance instance = host_.Create();
  EXPECT_EQ(host_.SendSync(instance, "asked"), "asked");
  host_.Destroy(instance);
}

static_assert(!std::is_copy_constructible_v<common::Extension>);
static_assert(!std::is_copy_constructible_v<common::Instance>);

}  // namespace
}  // namespace orvane::test
