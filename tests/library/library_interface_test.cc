// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// The library as it is shipped, through the C interface: the file that $ORVANE_LIBRARY names, or
// the one of the build. Nothing of the library's own sources is compiled in, so that the same
// program checks a build for another machine or against a set's packages.

#include <dlfcn.h>
#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <stdexcept>

#include "elf_symbols.h"
#include "fake_host.h"
#include "set_fixture.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::NotNull;
using ::testing::StartsWith;

std::filesystem::path LibraryFile() {
  const char* const given = getenv("ORVANE_LIBRARY");
#ifdef ORVANE_BUILT_LIBRARY
  return given == nullptr ? ORVANE_BUILT_LIBRARY : given;
#else
  if (given == nullptr) {
    throw std::runtime_error("ORVANE_LIBRARY does not name the library to test");
  }
  return given;
#endif
}

std::string Message(const std::string& method, const std::string& arguments = "{}") {
  return R"({"cmd":"OrvaneManager_)" + method + R"(","args":)" + arguments + "}";
}

std::string Success(const std::string& result) {
  return R"({"result":)" + result + R"(,"status":"success"})";
}

std::string Error(int code, const std::string& name, const std::string& message) {
  return R"({"error":{"code":)" + std::to_string(code) + R"(,"message":")" + message +
         R"(","name":")" + name + R"("},"status":"error"})";
}

std::string UnknownError(const std::string& message) {
  return Error(9999, "UnknownError", message);
}

class LibraryInterfaceTest : public SetFixture {
 protected:
  LibraryInterfaceTest() : library_(dlopen(LibraryFile().c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (library_ == nullptr) {
      throw std::runtime_error(dlerror());
    }
    entry_point_ = reinterpret_cast<XW_Initialize_Func>(dlsym(library_, "XW_Initialize"));
  }
  ~LibraryInterfaceTest() override { dlclose(library_); }

  void* const library_;
  XW_Initialize_Func entry_point_ = nullptr;
  FakeHost host_;
};

// With one page.
class PageInterfaceTest : public LibraryInterfaceTest {
 protected:
  PageInterfaceTest() {
    EXPECT_EQ(host_.Initialize(entry_point_), XW_OK);
    page_ = host_.Create();
  }
  ~PageInterfaceTest() override {
    set().faults().ClearAll();
    host_.Destroy(page_);
    host_.ShutDown();
    EXPECT_EQ(host_.dropped_posts(), 0);
  }

  std::string Call(const std::string& method, const std::string& arguments = "{}") {
    return host_.SendSync(page_, Message(method, arguments));
  }

  XW_Instance page_ = 0;
};

TEST_F(LibraryInterfaceTest, NamesItsObjectAndHandsItsScriptOver) {
  ASSERT_THAT(entry_point_, NotNull());
  EXPECT_EQ(host_.Initialize(entry_point_), XW_OK);
  EXPECT_EQ(host_.extension_name(), "dravelt.orvane");
  EXPECT_THAT(host_.entry_points(), IsEmpty());
  // One line, with the object that it exports.
  EXPECT_GT(host_.script().size(), 10000U);
  EXPECT_EQ(host_.script().find('\n'), std::string::npos);
  EXPECT_THAT(host_.script(), HasSubstr("exports"));
  EXPECT_THAT(host_.script(), HasSubstr("OrvaneManager_"));
  host_.ShutDown();
}

TEST_F(LibraryInterfaceTest, IsNotUsedByAHostThatLacksATable) {
  host_.Withhold(XW_INTERNAL_SYNC_MESSAGING_INTERFACE);
  EXPECT_EQ(host_.Initialize(entry_point_), XW_ERROR);
}

TEST_F(LibraryInterfaceTest, DoesWithoutTheTablesThatItDoesNotNeed) {
  host_.Withhold(XW_INTERNAL_ENTRY_POINTS_INTERFACE);
  host_.Withhold(XW_INTERNAL_RUNTIME_INTERFACE);
  EXPECT_EQ(host_.Initialize(entry_point_), XW_OK);
  host_.ShutDown();
}

TEST_F(LibraryInterfaceTest, MakesOneInstanceForEachContext) {
  host_.Initialize(entry_point_);
  const XW_Instance first = host_.Create();
  const XW_Instance second = host_.Create();
  EXPECT_THAT(host_.data(first), NotNull());
  EXPECT_THAT(host_.data(second), NotNull());
  EXPECT_NE(host_.data(first), host_.data(second));
  host_.Destroy(first);
  EXPECT_EQ(host_.SendSync(second, Message("getVersion")), Success(R"("3.9")"));
  host_.Destroy(second);
  host_.ShutDown();
}

TEST_F(LibraryInterfaceTest, ServesPagesThatOutliveItsShutdown) {
  host_.Initialize(entry_point_);
  const XW_Instance page = host_.Create();
  host_.ShutDown();
  EXPECT_EQ(host_.SendSync(page, Message("getVersion")), Success(R"("3.9")"));
  host_.Destroy(page);
}

TEST_F(LibraryInterfaceTest, BindsNothingAfterItsShutdown) {
  host_.Initialize(entry_point_);
  host_.ShutDown();
  host_.ShutDown();
  const XW_Instance page = host_.Create();
  EXPECT_THAT(host_.data(page), IsNull());
  EXPECT_EQ(host_.SendSync(page, Message("getVersion")), "");
  host_.Destroy(page);
}

TEST_F(LibraryInterfaceTest, CanBeInitialisedAgainAfterAShutdown) {
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(host_.Initialize(entry_point_), XW_OK);
    const XW_Instance page = host_.Create();
    EXPECT_EQ(host_.SendSync(page, Message("getVersion")), Success(R"("3.9")"));
    host_.Destroy(page);
    host_.ShutDown();
  }
}

TEST_F(LibraryInterfaceTest, CanBeInitialisedAgainWithoutAShutdown) {
#ifdef __SANITIZE_ADDRESS__
  // The first extension object is given up: a host owes the library its shutdown.
  const __lsan::ScopedDisabler expected_leak;
#endif
  EXPECT_EQ(host_.Initialize(entry_point_), XW_OK);
  const XW_Instance page = host_.Create();
  EXPECT_EQ(host_.Initialize(entry_point_), XW_OK);
  EXPECT_EQ(host_.SendSync(page, Message("getVersion")), Success(R"("3.9")"));
  host_.Destroy(page);
  host_.ShutDown();
}

// Loaded by the test itself, so that it goes when the test closes it.
class UnloadingTest : public SetFixture {
 protected:
  FakeHost host_;
};

TEST_F(UnloadingTest, IsUnloadedWithoutAWaitAfterItsTasks) {
  for (int round = 0; round < 50; ++round) {
    void* const library = dlopen(LibraryFile().c_str(), RTLD_NOW | RTLD_LOCAL);
    host_.Initialize(reinterpret_cast<XW_Initialize_Func>(dlsym(library, "XW_Initialize")));
    const XW_Instance page = host_.Create();
    host_.SendSync(page, Message("recordProfiling", R"({"callbackId":1,"label":"x"})"));
    host_.Destroy(page);
    host_.ShutDown();
    dlclose(library);
    ASSERT_THAT(dlopen(LibraryFile().c_str(), RTLD_NOW | RTLD_NOLOAD), IsNull());
  }
}

TEST_F(PageInterfaceTest, AnswersTheQueries) {
  EXPECT_EQ(Call("getVersion"), Success(R"("3.9")"));
  EXPECT_EQ(Call("getForegroundAppId"), Success(R"("aBcDe01234.Player")"));
  EXPECT_EQ(Call("getAppState", R"({"appid":""})"), Success(R"("FOREGROUND")"));
  EXPECT_EQ(Call("getIMEResolution"), Success("1"));
  EXPECT_EQ(Call("setEpopAppWindow"), Success("true"));
  EXPECT_THAT(Call("getUuid"), StartsWith(R"({"result":")"));
  EXPECT_EQ(Call("getUuid"), Call("getUuid"));
}

TEST_F(PageInterfaceTest, AnswersTheRequests) {
  EXPECT_EQ(Call("generateKey", R"({"xKeyCode":76.9})"), Success("true"));
  EXPECT_EQ(Call("requestTvContextTask", R"({"target":0,"action":0})"), Success("true"));
  Declare({{"http://dravelt.example/tv/metadata/register.keygrab.mode.special", "true"}},
          {"http://tizen.org/privilege/internal/default/platform"});
  EXPECT_EQ(Call("registerKeyInSpecialMode"), Success("true"));
  EXPECT_EQ(Call("checkPlatformLevelPrivilege"), R"({"status":"success"})");

  ASSERT_EQ(set().keys().injected().size(), 1U);
  EXPECT_EQ(set().keys().injected()[0].key_code, 76);
  ASSERT_EQ(set().context_manager().tasks().size(), 1U);
  EXPECT_EQ(set().context_manager().tasks()[0].target, "last:source");
}

TEST_F(PageInterfaceTest, AnswersEachFailure) {
  Fail("aul_app_get_appid_bypid");
  Fail("app_manager_get_focused_app_context");
  Fail("app_manager_get_app_context");
  Fail("system_info_get_custom_int");
  Fail("system_info_get_custom_bool");
  Fail("app_context_manager_request_task");
  EXPECT_EQ(Call("getUuid"), UnknownError("Invalid Choice"));
  EXPECT_EQ(Call("getForegroundAppId"), UnknownError("AppID is null"));
  EXPECT_EQ(Call("getAppState", R"({"appid":"x"})"), UnknownError("Failed to get app state"));
  EXPECT_EQ(Call("getIMEResolution"), UnknownError("Failed to get ime resolution"));
  EXPECT_EQ(Call("setEpopAppWindow"),
            Error(9, "NotSupportedError", "setEpopappWindow is only supported on UHD models"));
  EXPECT_EQ(Call("registerKeyInSpecialMode"),
            Error(9, "NotSupportedError", "Application does not have required metadata value"));
  EXPECT_EQ(Call("checkPlatformLevelPrivilege"), Error(18, "SecurityError", "Permission denied"));
  EXPECT_EQ(Call("requestTvContextTask", R"({"target":0,"action":0})"),
            UnknownError("tvcontext_request_task is failed"));
  Fail("app_context_manager_init");
  EXPECT_EQ(Call("requestTvContextTask", R"({"target":0,"action":0})"),
            UnknownError("vcontext_init is failed"));
}

TEST_F(PageInterfaceTest, AnswersMissingArguments) {
  EXPECT_EQ(Call("generateKey"), Error(17, "TypeMismatchError", "xKeyCode is required argument"));
  EXPECT_EQ(Call("getSystemStat", R"({"resource":"CPU"})"),
            Error(17, "TypeMismatchError", "callbackId is required argument"));
  EXPECT_EQ(Call("setScreenSaver", R"({"callbackId":1})"),
            Error(17, "TypeMismatchError", "state is required argument"));
  EXPECT_EQ(Call("recordProfiling", R"({"callbackId":1})"),
            Error(17, "TypeMismatchError", "label is required argument"));
  EXPECT_EQ(Call("getSystemStat", R"({"callbackId":1,"resource":"DISK"})"),
            UnknownError("Invalid resource for getSystemStat"));
  EXPECT_THAT(host_.posts(page_), IsEmpty());
}

TEST_F(PageInterfaceTest, PostsAsynchronousRepliesWithTheCallersId) {
  for (const char* id : {"0", "7", "-7", "0.5", "-2.25", "4294967296", "9007199254740992"}) {
    const std::string start = R"({"callbackId":)" + std::string(id);
    const std::string success = start + R"(,"result":{},"status":"success"})";
    EXPECT_EQ(Call("setScreenSaver", start + R"(,"state":0})"), "{}");
    EXPECT_EQ(host_.AwaitPost(page_), success);
    EXPECT_EQ(Call("setScreenSaver", start + R"(,"state":1})"), "{}");
    EXPECT_EQ(host_.AwaitPost(page_), success);
    EXPECT_EQ(Call("recordProfiling", start + R"(,"label":"x"})"), "{}");
    EXPECT_EQ(host_.AwaitPost(page_), success);
    EXPECT_EQ(Call("getSystemStat", start + R"(,"resource":"MEMORY"})"), "{}");
    EXPECT_THAT(host_.AwaitPost(page_), StartsWith(start + ",\""));
  }
}

TEST_F(PageInterfaceTest, PostsACpuFigure) {
  EXPECT_EQ(Call("getSystemStat", R"({"callbackId":5,"resource":"CPU"})"), "{}");
  EXPECT_THAT(host_.AwaitPost(page_),
              ::testing::MatchesRegex(
                  R"(\{"callbackId":5,"result":\{"cpuUsage":[0-9]+\},"status":"success"\})"));
}

TEST_F(PageInterfaceTest, PostsAsynchronousFailures) {
  Fail("screensaver_set_appid");
  Fail("screensaver_set_timeout");
  Fail("vconf_set_str");
  Call("setScreenSaver", R"({"callbackId":1,"state":1})");
  EXPECT_THAT(host_.AwaitPost(page_), HasSubstr(R"("message":"Fail to activate ScreenSaver")"));
  Call("recordProfiling", R"({"callbackId":2,"label":"x"})");
  const std::string reply = host_.AwaitPost(page_);
  EXPECT_THAT(reply, StartsWith(R"({"callbackId":2,"error":{"code":9999,)"));
  EXPECT_THAT(reply, HasSubstr(R"("message":"Fail to record profile")"));
}

TEST_F(PageInterfaceTest, PostsToThePageThatAsked) {
  const XW_Instance other = host_.Create();
  host_.SendSync(other, Message("recordProfiling", R"({"callbackId":1,"label":"x"})"));
  EXPECT_EQ(host_.AwaitPost(other), R"({"callbackId":1,"result":{},"status":"success"})");
  EXPECT_THAT(host_.posts(page_), IsEmpty());
  host_.Destroy(other);
}

TEST_F(PageInterfaceTest, RefusesMalformedMessages) {
  for (const char* message :
       {"", "x", "null", "[]", "{", "{}", R"({"cmd":1})", R"({"cmd":"OrvaneManager_getVersion"}x)",
        R"({"cmd":"OrvaneManager_getVersion","args":[]})",
        R"({"cmd":"OrvaneManager_generateKey","args":{"xKeyCode":1e999}})"}) {
    EXPECT_THAT(host_.SendSync(page_, message), StartsWith(R"({"error":{"code":9999,"message":")"))
        << message;
  }
  EXPECT_EQ(Call("fly"), Error(9, "NotSupportedError", "Unknown command: OrvaneManager_fly"));
  EXPECT_EQ(Call("getVersion"), Success(R"("3.9")"));
}

TEST_F(PageInterfaceTest, AnswersNumbersOfAnySize) {
  for (const char* number : {"1e308", "-1e308", "5e-324", "9223372036854775808", "-0.0"}) {
    const std::string n(number);
    EXPECT_EQ(Call("generateKey", R"({"xKeyCode":)" + n + "}"), Success("true")) << n;
    EXPECT_THAT(Call("requestTvContextTask", R"({"target":)" + n + R"(,"action":)" + n + "}"),
                HasSubstr("status"))
        << n;
  }
}

// Pages that come and go while their calls are under way.
class StormTest : public LibraryInterfaceTest {
 protected:
  static constexpr size_t kPages = 50;
  static constexpr int kCalls = 10000;

  StormTest() { host_.Initialize(entry_point_); }
  ~StormTest() override { host_.ShutDown(); }

  void Ask(XW_Instance page, int call) {
    const std::string id = R"({"callbackId":)" + std::to_string(call);
    asked_[page].push_back(id + R"(,"result":{},"status":"success"})");
    // Labels for some, since each of them is written to a file.
    EXPECT_EQ(
        host_.SendSync(page, call % 16 == 0 ? Message("recordProfiling", id + R"(,"label":"x"})")
                                            : Message("setScreenSaver", id + R"(,"state":1})")),
        "{}");
  }
  void Close(XW_Instance page) {
    EXPECT_EQ(host_.Destroy(page), asked_[page]);
    asked_.erase(page);
  }

  // The replies that each page is owed, in their order.
  std::map<XW_Instance, std::vector<std::string>> asked_;
};

TEST_F(StormTest, NoReplyIsLostDoubledOrGivenToAnotherPage) {
  std::mt19937 random(1);
  std::vector<XW_Instance> pages(kPages, 0);
  for (int call = 0; call < kCalls; ++call) {
    XW_Instance& page = pages[random() % kPages];
    if (page == 0) {
      page = host_.Create();
    }
    Ask(page, call);
    if (random() % 100 == 0) {
      Close(page);
      page = 0;
    }
  }
  for (const XW_Instance page : pages) {
    if (page != 0) {
      Close(page);
    }
  }
  EXPECT_EQ(host_.dropped_posts(), 0);
}

// ---- The file itself ----------------------------------------------------------------------------

bool StartsWithOneOf(const std::string& text, const std::vector<std::string>& prefixes) {
  for (const std::string& prefix : prefixes) {
    if (text.rfind(prefix, 0) == 0) {
      return true;
    }
  }
  return false;
}

// The C and C++ libraries with what they stand on, and libuuid: whoever else defines the same name,
// the library means theirs.
bool IsOfALanguageLibrary(const ElfSymbol& symbol) {
  static const std::vector<void*> kLibraries = [] {
    std::vector<void*> libraries;
    for (const char* name :
         {"libc.so.6", "libm.so.6", "libstdc++.so.6", "libgcc_s.so.1", "libuuid.so.1"}) {
      libraries.push_back(dlopen(name, RTLD_NOW | RTLD_LOCAL));
      EXPECT_THAT(libraries.back(), NotNull()) << dlerror();
    }
    return libraries;
  }();
  return std::any_of(kLibraries.begin(), kLibraries.end(), [&symbol](void* library) {
    return dlsym(library, symbol.name.c_str()) != nullptr;
  });
}

bool IsOfTheFramework(const ElfSymbol& symbol) {
  return StartsWithOneOf(symbol.name,
                         {"_ZN6common", "_ZNK6common", "_ZTIN6common", "_ZTVN6common"});
}

// What the compiler leaves in any library, and in one that it instruments.
bool IsOfTheCompiler(const ElfSymbol& symbol) {
  return (symbol.weak && StartsWithOneOf(symbol.name, {"__gmon_start__", "_ITM_"})) ||
         StartsWithOneOf(symbol.name,
                         {"__asan_", "__ubsan_", "__tsan_", "__lsan_", "__sanitizer_"});
}

std::set<std::string> ReadList(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::set<std::string> names;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line[0] != '#') {
      names.insert(line);
    }
  }
  return names;
}

TEST(LibraryFileTest, ExportsItsEntryPointAlone) {
  std::vector<std::string> exported;
  for (const ElfSymbol& symbol : ReadDynamicSymbols(LibraryFile())) {
    if (symbol.defined) {
      exported.push_back(symbol.name);
    }
  }
  EXPECT_THAT(exported, ElementsAre("XW_Initialize"));
}

TEST(LibraryFileTest, NeedsTheListedFunctionsOfThePlatformAndNoOthers) {
  std::set<std::string> needed;
  for (const ElfSymbol& symbol : ReadDynamicSymbols(LibraryFile())) {
    if (!symbol.defined && !IsOfALanguageLibrary(symbol) && !IsOfTheFramework(symbol) &&
        !IsOfTheCompiler(symbol)) {
      needed.insert(symbol.name);
    }
  }
  EXPECT_EQ(needed, ReadList(ORVANE_PLATFORM_SYMBOLS));
}

}  // namespace
}  // namespace orvane::test
