// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/faults.h"

#include <dlfcn.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <thread>

#include <VirtualKey.h>
#include <app_context_manager.h>
#include <app_manager.h>
#include <app_manager_extension.h>
#include <aul.h>
#include <dlog.h>
#include <pkgmgr-info.h>
#include <privilege.h>
#include <screensaver.h>
#include <system_info.h>
#include <tzplatform_config.h>
#include <vconf.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kApp[] = "ab12cd34ef.Player";
constexpr char kSetting[] = "memory/faults/test";
constexpr int kCode = -4711;

// The answer of a function that has no code to answer with.
int Code(const void* pointer) { return pointer == nullptr ? kCode : 0; }

void NothingChanged(keynode_t* /*node*/, void* /*user_data*/) {}

// Calls each platform function with arguments that it accepts, in a set where it succeeds.
class FaultsTest : public SetTest {
 protected:
  FaultsTest() {
    Application application;
    application.id = kApp;
    application.package = "ab12cd34ef";
    application.metadata = {{"key", "value"}};
    application.privileges = {"http://example.com/privilege"};
    set().applications().Install(application);
    set().applications().Launch(kApp, getpid());
    vconf_set_str(kSetting, "x");
    VirtualKey_Initialize(0);
    app_context_manager_init();
    app_manager_get_app_context(kApp, &context_);
    pkgmgrinfo_appinfo_get_appinfo(kApp, &package_);
  }

  std::map<std::string, std::function<int()>> Calls() {
    std::map<std::string, std::function<int()>> calls;
    AddApplicationCalls(calls);
    AddSystemCalls(calls);
    AddTelevisionCalls(calls);
    return calls;
  }

 private:
  void AddApplicationCalls(std::map<std::string, std::function<int()>>& calls) {
    calls["app_manager_get_app_context"] = [this] {
      return app_manager_get_app_context(kApp, &other_context_);
    };
    calls["app_manager_get_focused_app_context"] = [this] {
      return app_manager_get_focused_app_context(&other_context_);
    };
    calls["app_context_get_app_id"] = [this] {
      char* id = nullptr;
      const int result = app_context_get_app_id(context_, &id);
      std::free(id);
      return result;
    };
    calls["app_context_get_pid"] = [this] {
      pid_t pid = 0;
      return app_context_get_pid(context_, &pid);
    };
    calls["app_context_get_app_state"] = [this] {
      app_state_e state{};
      return app_context_get_app_state(context_, &state);
    };
    calls["app_context_destroy"] = [] {
      app_context_h context = nullptr;
      app_manager_get_app_context(kApp, &context);
      return app_context_destroy(context);
    };
    calls["aul_app_get_appid_bypid"] = [] {
      char id[255];
      return aul_app_get_appid_bypid(getpid(), id, sizeof(id));
    };
    calls["pkgmgrinfo_appinfo_get_appinfo"] = [this] {
      return pkgmgrinfo_appinfo_get_appinfo(kApp, &other_package_);
    };
    calls["pkgmgrinfo_appinfo_get_metadata_value"] = [this] {
      char* value = nullptr;
      return pkgmgrinfo_appinfo_get_metadata_value(package_, "key", &value);
    };
    calls["pkgmgrinfo_appinfo_destroy_appinfo"] = [] {
      pkgmgrinfo_appinfo_h handle = nullptr;
      pkgmgrinfo_appinfo_get_appinfo(kApp, &handle);
      return pkgmgrinfo_appinfo_destroy_appinfo(handle);
    };
    calls["privilege_check_application"] = [] {
      return privilege_check_application(kApp, "http://example.com/privilege");
    };
  }

  static void AddSystemCalls(std::map<std::string, std::function<int()>>& calls) {
    calls["system_info_get_custom_int"] = [] {
      int value = 0;
      return system_info_get_custom_int("com.korvale/featureconf/ime.resolution", &value);
    };
    calls["system_info_get_custom_bool"] = [] {
      bool value = false;
      return system_info_get_custom_bool("com.korvale/featureconf/ud_panel_supported", &value);
    };
    calls["system_info_get_platform_string"] = [] {
      char* value = nullptr;
      const int result =
          system_info_get_platform_string("tizen.org/feature/platform.version", &value);
      std::free(value);
      return result;
    };
    calls["vconf_set_str"] = [] { return vconf_set_str(kSetting, "y"); };
    calls["vconf_get_str"] = [] {
      char* value = vconf_get_str(kSetting);
      const int result = Code(value);
      std::free(value);
      return result;
    };
    calls["vconf_notify_key_changed"] = [] {
      const int result = vconf_notify_key_changed(kSetting, NothingChanged, nullptr);
      if (result == 0) vconf_ignore_key_changed(kSetting, NothingChanged);
      return result;
    };
    calls["vconf_ignore_key_changed"] = [] {
      vconf_notify_key_changed(kSetting, NothingChanged, nullptr);
      return vconf_ignore_key_changed(kSetting, NothingChanged);
    };
    calls["tzplatform_getenv"] = [] { return Code(tzplatform_getenv(TZ_USER_APP)); };
    calls["tzplatform_getname"] = [] { return Code(tzplatform_getname(TZ_USER_APP)); };
    calls["tzplatform_getid"] = [] {
      const bool failed = tzplatform_getid("TZ_USER_APP") == _TZPLATFORM_VARIABLES_INVALID_;
      return failed ? kCode : 0;
    };
    calls["__dlog_print"] = [] {
      const int written = __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TEST", "%s", "text");
      return written == 4 ? 0 : written;
    };
    calls["dlog_print"] = [] {
      const int written = dlog_print(DLOG_INFO, "TEST", "%s", "text");
      return written == 4 ? 0 : written;
    };
  }

  static void AddTelevisionCalls(std::map<std::string, std::function<int()>>& calls) {
    calls["VirtualKey_Initialize"] = [] { return VirtualKey_Initialize(0); };
    calls["VirtualKey_Send_KeyCode"] = [] { return VirtualKey_Send_KeyCode(76, 2); };
    calls["app_context_manager_init"] = [] { return app_context_manager_init(); };
    calls["app_context_manager_request_task"] = [] {
      return app_context_manager_request_task("last:source", "launch");
    };
    calls["screensaver_set_appid"] = [] { return screensaver_set_appid("DEFAULT"); };
    calls["screensaver_set_timeout"] = [] { return screensaver_set_timeout(0); };
    calls["screensaver_reset_timeout"] = [] { return screensaver_reset_timeout(); };
  }

  app_context_h context_ = nullptr;
  app_context_h other_context_ = nullptr;
  pkgmgrinfo_appinfo_h package_ = nullptr;
  pkgmgrinfo_appinfo_h other_package_ = nullptr;
};

TEST_F(FaultsTest, TableNamesEveryPlatformFunction) {
  std::vector<std::string> called;
  for (const auto& [name, call] : Calls()) called.push_back(name);
  EXPECT_EQ(FaultTable::functions(), called);
  for (const std::string& name : FaultTable::functions()) {
    EXPECT_NE(dlsym(RTLD_DEFAULT, name.c_str()), nullptr) << name;
  }
}

TEST_F(FaultsTest, EveryFunctionFailsOnceAndThenWorks) {
  for (const auto& [name, call] : Calls()) {
    set().faults().Fail(name, kCode, FaultMode::kOnce);
    EXPECT_EQ(call(), kCode) << name;
    EXPECT_EQ(call(), 0) << name;
    EXPECT_TRUE(set().faults().list().empty()) << name;
  }
}

TEST_F(FaultsTest, EveryFunctionFailsUntilTheFaultIsCleared) {
  for (const auto& [name, call] : Calls()) {
    set().faults().Fail(name, kCode, FaultMode::kAlways);
    EXPECT_EQ(call(), kCode) << name;
    EXPECT_EQ(call(), kCode) << name;
    set().faults().Clear(name);
    EXPECT_EQ(call(), 0) << name;
  }
}

TEST_F(FaultsTest, FailedFunctionDoesNothing) {
  set().faults().Fail("vconf_set_str", -1, FaultMode::kAlways);
  set().faults().Fail("VirtualKey_Send_KeyCode", -1, FaultMode::kAlways);
  set().faults().Fail("__dlog_print", -1, FaultMode::kAlways);
  const uint64_t written = set().log().written();
  vconf_set_str(kSetting, "changed");
  VirtualKey_Send_KeyCode(76, 2);
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TEST", "text");
  EXPECT_EQ(set().settings().GetString(kSetting), "x");
  EXPECT_TRUE(set().keys().injected().empty());
  EXPECT_EQ(set().log().written(), written);
}

TEST_F(FaultsTest, FaultOfOneFunctionLeavesTheOthersAlone) {
  set().faults().Fail("vconf_get_str", -1, FaultMode::kAlways);
  EXPECT_EQ(vconf_set_str(kSetting, "y"), 0);
}

TEST_F(FaultsTest, LaterFaultReplacesTheEarlierOne) {
  set().faults().Fail("screensaver_set_appid", -1, FaultMode::kAlways);
  set().faults().Fail("screensaver_set_appid", -2, FaultMode::kOnce);
  EXPECT_EQ(set().faults().list().size(), 1u);
  EXPECT_EQ(screensaver_set_appid("DEFAULT"), -2);
  EXPECT_EQ(screensaver_set_appid("DEFAULT"), 0);
}

TEST_F(FaultsTest, ListIsInOrderOfNames) {
  set().faults().Fail("vconf_set_str", -1, FaultMode::kAlways);
  set().faults().Fail("dlog_print", -2, FaultMode::kOnce);
  const std::vector<Fault> faults = set().faults().list();
  ASSERT_EQ(faults.size(), 2u);
  EXPECT_EQ(faults[0].function, "dlog_print");
  EXPECT_EQ(faults[0].code, -2);
  EXPECT_EQ(faults[0].mode, FaultMode::kOnce);
  EXPECT_EQ(faults[1].function, "vconf_set_str");
  set().faults().ClearAll();
  EXPECT_TRUE(set().faults().list().empty());
}

TEST_F(FaultsTest, UnknownFunctionIsRefusedWithNearNames) {
  try {
    set().faults().Fail("vconf_set_string", -1, FaultMode::kOnce);
    FAIL() << "accepted";
  } catch (const SetError& error) {
    EXPECT_NE(std::string(error.what()).find("vconf_set_str"), std::string::npos) << error.what();
  }
}

TEST_F(FaultsTest, UnknownFunctionWithoutANearNameIsRefusedWithAllNames) {
  try {
    set().faults().Fail("qqqqqqqqqqqqqqqqqqqqqqqqqqq", -1, FaultMode::kOnce);
    FAIL() << "accepted";
  } catch (const SetError& error) {
    const std::string text = error.what();
    for (const std::vector<std::string>& names :
         {FaultTable::functions(), FaultTable::accesses()}) {
      for (const std::string& name : names) {
        EXPECT_NE(text.find(" " + name), std::string::npos) << name << " in " << text;
      }
    }
  }
}

TEST_F(FaultsTest, CodeZeroIsRefused) {
  EXPECT_THROW(set().faults().Fail("vconf_set_str", 0, FaultMode::kOnce), SetError);
}

TEST_F(FaultsTest, OneOfSeveralThreadsTakesAFaultThatIsSetOnce) {
  set().faults().Fail("screensaver_set_timeout", kCode, FaultMode::kOnce);
  std::atomic<int> failed{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&failed] {
      for (int call = 0; call < 100; ++call) failed += screensaver_set_timeout(0) == kCode ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failed, 1);
}

TEST_F(FaultsTest, RestartClearsTheFaults) {
  set().faults().Fail("vconf_set_str", -1, FaultMode::kAlways);
  StartSet();
  EXPECT_TRUE(set().faults().list().empty());
  EXPECT_EQ(vconf_set_str(kSetting, "y"), 0);
}

}  // namespace
}  // namespace tvset::testing
