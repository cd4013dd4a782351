// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <signal.h>
#include <sys/wait.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include <pwd.h>
#include <system_info.h>
#include <tzplatform_config.h>
#include <vconf.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

namespace fs = std::filesystem;

// A set that is started by each test, with an environment of its own.
class StartTest : public ::testing::Test {
 protected:
  StartTest() {
    unsetenv("ORVANE_STATE");
    unsetenv("ORVANE_PROFILE");
    unsetenv("XDG_STATE_HOME");
    setenv("HOME", folder_.path().c_str(), 1);
  }
  ~StartTest() override { Set::Stop(); }

  const fs::path& folder() const { return folder_.path(); }

  static std::string ErrorOf(const Options& options) {
    try {
      Set::Start(options);
    } catch (const SetError& error) {
      return error.what();
    }
    return "started";
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(StartTest, FirstUseStartsADefaultSet) {
  EXPECT_FALSE(Set::running());
  EXPECT_EQ(Set::Current().paths().state_folder(), folder() / ".local/state/orvane");
  EXPECT_TRUE(Set::running());
  EXPECT_EQ(Set::Current().profile().filename(), "uhd.xml");
}

TEST_F(StartTest, PlatformFunctionStartsADefaultSetToo) {
  EXPECT_EQ(vconf_set_str("db/a", "1"), 0);
  EXPECT_TRUE(Set::running());
}

TEST_F(StartTest, StateFolderFollowsOptionThenEnvironmentThenStateHome) {
  setenv("XDG_STATE_HOME", (folder() / "xdg").c_str(), 1);
  Set::Start(Options{});
  EXPECT_EQ(Set::Current().paths().state_folder(), folder() / "xdg/orvane");
  setenv("ORVANE_STATE", (folder() / "env").c_str(), 1);
  Set::Start(Options{});
  EXPECT_EQ(Set::Current().paths().state_folder(), folder() / "env");
  Set::Start(Options{folder() / "option", ""});
  EXPECT_EQ(Set::Current().paths().state_folder(), folder() / "option");
}

TEST_F(StartTest, RelativeStateHomeCountsAsNone) {
  setenv("XDG_STATE_HOME", "relative", 1);
  EXPECT_EQ(Paths::DefaultStateFolder(), folder() / ".local/state/orvane");
}

TEST_F(StartTest, NoFolderAtAllIsAnError) {
  unsetenv("HOME");
  EXPECT_NE(ErrorOf(Options{}).find("ORVANE_STATE"), std::string::npos);
  EXPECT_NE(vconf_set_str("db/a", "1"), 0);
  int value = 0;
  EXPECT_EQ(system_info_get_custom_int("a.b/c", &value), -5);
  EXPECT_EQ(tzplatform_getenv(TZ_USER_APP), nullptr);
}

TEST_F(StartTest, ProfileFollowsOptionThenEnvironment) {
  setenv("ORVANE_PROFILE", "fhd", 1);
  Set::Start(Options{folder() / "state", ""});
  EXPECT_EQ(Set::Current().profile().filename(), "fhd.xml");
  Set::Start(Options{folder() / "state", "uhd"});
  EXPECT_EQ(Set::Current().profile().filename(), "uhd.xml");
}

TEST_F(StartTest, UnknownProfileIsRefusedWithTheShippedNames) {
  const std::string error = ErrorOf(Options{folder() / "state", "8k"});
  EXPECT_NE(error.find("\"8k\""), std::string::npos) << error;
  EXPECT_NE(error.find("fhd, uhd"), std::string::npos) << error;
}

TEST_F(StartTest, FailedStartLeavesTheOldSetRunning) {
  Set::Start(Options{folder() / "state", "fhd"});
  EXPECT_NE(ErrorOf(Options{folder() / "other", "8k"}), "started");
  std::ofstream(folder() / "file") << "x";
  EXPECT_NE(ErrorOf(Options{folder() / "file", "uhd"}), "started");
  EXPECT_EQ(Set::Current().paths().state_folder(), folder() / "state");
  EXPECT_EQ(Set::Current().profile().filename(), "fhd.xml");
  EXPECT_EQ(vconf_set_str("db/a", "1"), 0);
}

TEST_F(StartTest, UnusableFolderIsNamed) {
  std::ofstream(folder() / "file") << "x";
  const std::string error = ErrorOf(Options{folder() / "file" / "state", "uhd"});
  EXPECT_NE(error.find((folder() / "file/state").string()), std::string::npos) << error;
  EXPECT_NE(error.find("--state"), std::string::npos) << error;
}

TEST_F(StartTest, RestartIsASetJustSwitchedOn) {
  Set::Start(Options{folder() / "state", "uhd"});
  Application application;
  application.id = application.package = "app";
  Set::Current().applications().Install(application);
  Set::Current().applications().Launch("app", getpid());
  Set::Current().keys().Initialize();
  Set::Current().input_method().set_dynamic_style(false);
  Set::Start(Options{folder() / "state", "uhd"});
  EXPECT_TRUE(Set::Current().applications().list().empty());
  EXPECT_EQ(Set::Current().applications().focused(), "");
  EXPECT_EQ(Set::Current().keys().initialized(), 0);
  EXPECT_TRUE(Set::Current().input_method().state().dynamic_style);
}

TEST_F(StartTest, ApplicationDataOutlivesRestartAndReinstallation) {
  Application application;
  application.id = application.package = "app";
  Set::Start(Options{folder() / "state", "uhd"});
  Set::Current().applications().Install(application);
  std::ofstream(Set::Current().paths().app_data("app") / "uuid") << "text";
  Set::Start(Options{folder() / "state", "uhd"});
  Set::Current().applications().Install(application);
  EXPECT_EQ(fs::file_size(Set::Current().paths().app_data("app") / "uuid"), 4u);
}

TEST_F(StartTest, ReferencesOutliveTheSet) {
  Set::Start(Options{folder() / "state", "uhd"});
  const Paths& paths = Set::Current().paths();
  Settings& settings = Set::Current().settings();
  Set::Stop();
  EXPECT_EQ(paths.state_folder(), folder() / "state");
  EXPECT_FALSE(settings.SetString("db/a", "1"));
  EXPECT_TRUE(settings.list().empty());
  EXPECT_THROW(Set::Instance().paths(), SetError);
  EXPECT_THROW(Set::Instance().applications().Install(Application{}), SetError);
}

TEST_F(StartTest, StateHeldByACrashedProcessIsFreed) {
  const Options options{folder() / "state", "uhd"};
  const pid_t child = fork();
  if (child == 0) {
    Set::Start(options);
    vconf_set_str("memory/left", "behind");
    raise(SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  Set::Start(options);
  EXPECT_EQ(vconf_get_str("memory/left"), nullptr);
}

TEST_F(StartTest, FolderTellsWhetherASetRunsOnIt) {
  const fs::path state = folder() / "state";
  EXPECT_FALSE(Set::RunsOn(state));
  EXPECT_FALSE(fs::exists(state)) << "asking makes nothing";
  Set::Start(Options{state, "uhd"});
  EXPECT_TRUE(Set::RunsOn(state));
  EXPECT_FALSE(Set::RunsOn(folder() / "other"));
  Set::Stop();
  EXPECT_FALSE(Set::RunsOn(state));
}

TEST_F(StartTest, AskingDoesNotKeepAStartFromForgettingMemory) {
  const Options options{folder() / "state", "uhd"};
  Set::Start(options);
  vconf_set_str("memory/x", "1");
  Set::Stop();
  std::atomic<bool> stop{false};
  std::thread asker([&] {
    while (!stop) Set::RunsOn(options.state_folder);
  });
  for (int i = 0; i < 50; ++i) {
    Set::Start(options);
    EXPECT_FALSE(Set::Current().settings().Exists("memory/x"));
    vconf_set_str("memory/x", "1");
    Set::Stop();
  }
  stop = true;
  asker.join();
}

TEST_F(StartTest, PlatformFunctionsSurviveRestartsInOtherThreads) {
  std::atomic<bool> stop{false};
  setenv("ORVANE_STATE", (folder() / "state").c_str(), 1);
  std::thread caller([&stop] {
    int value = 0;
    while (!stop) {
      static_cast<void>(tzplatform_getenv(TZ_USER_APP));
      static_cast<void>(
          system_info_get_custom_int("com.korvale/featureconf/ime.resolution", &value));
      static_cast<void>(vconf_set_str("memory/x", "1"));
    }
  });
  for (int i = 0; i < 50; ++i) Set::Start(Options{folder() / "state", i % 2 == 0 ? "uhd" : "fhd"});
  stop = true;
  caller.join();
  EXPECT_TRUE(Set::running());
}

}  // namespace
}  // namespace tvset::testing
