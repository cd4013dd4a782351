// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <filesystem>
#include <string>

#include <app_manager.h>
#include <app_manager_extension.h>
#include <aul.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kPlayer[] = "ab12cd34ef.Player";
constexpr char kGuide[] = "gh56ij78kl.Guide";

class ApplicationsTest : public SetTest {
 protected:
  static std::string IdOf(app_context_h context) {
    char* id = nullptr;
    if (app_context_get_app_id(context, &id) != APP_MANAGER_ERROR_NONE) return "failed";
    const std::string result = id;
    std::free(id);
    return result;
  }

  static int StateOf(const std::string& id) {
    app_context_h context = nullptr;
    app_state_e state = APP_STATE_UNDEFINED;
    const int result = app_manager_get_app_context(id.c_str(), &context);
    if (result != APP_MANAGER_ERROR_NONE) return result;
    app_context_get_app_state(context, &state);
    app_context_destroy(context);
    return state;
  }
};

TEST_F(ApplicationsTest, InstallMakesTheFoldersOfThePackage) {
  Install(kPlayer);
  const std::filesystem::path home = set().paths().app_root() / "ab12cd34ef";
  for (const char* name : {"data", "cache", "tmp", "shared/data", "shared/res", "shared/trusted"}) {
    EXPECT_TRUE(std::filesystem::is_directory(home / name)) << name;
  }
}

TEST_F(ApplicationsTest, RefusesPackageThatLeavesTheApplicationRoot) {
  for (const char* package : {"", ".", "..", "../x", "a/b"}) {
    Application application;
    application.id = kPlayer;
    application.package = package;
    EXPECT_THROW(set().applications().Install(application), SetError) << package;
  }
}

TEST_F(ApplicationsTest, LaunchGivesForegroundAndFocus) {
  Launch(kPlayer);
  EXPECT_EQ(set().applications().State(kPlayer), APP_STATE_FOREGROUND);
  EXPECT_EQ(set().applications().focused(), kPlayer);
}

TEST_F(ApplicationsTest, LaunchSendsTheFocusedApplicationToTheBackground) {
  Launch(kPlayer);
  Launch(kGuide);
  EXPECT_EQ(StateOf(kPlayer), APP_STATE_BACKGROUND);
  EXPECT_EQ(StateOf(kGuide), APP_STATE_FOREGROUND);
}

TEST_F(ApplicationsTest, FocusBringsABackgroundApplicationBack) {
  Launch(kPlayer);
  Launch(kGuide);
  set().applications().SetFocus(kPlayer);
  EXPECT_EQ(StateOf(kPlayer), APP_STATE_FOREGROUND);
  EXPECT_EQ(set().applications().raise_order().front(), kPlayer);
}

TEST_F(ApplicationsTest, ControlRefusesWhatIsNotInstalledOrDoesNotRun) {
  EXPECT_THROW(set().applications().Launch(kPlayer, 1), SetError);
  EXPECT_THROW(set().applications().SetState(kPlayer, 1), SetError);
  EXPECT_THROW(set().applications().Terminate(kPlayer), SetError);
  EXPECT_THROW(set().applications().Uninstall(kPlayer), SetError);
  Install(kPlayer);
  EXPECT_THROW(set().applications().SetFocus(kPlayer), SetError);
}

TEST_F(ApplicationsTest, TerminateTakesTheFocusAndTheContext) {
  Launch(kPlayer);
  set().applications().Terminate(kPlayer);
  EXPECT_EQ(set().applications().focused(), "");
  EXPECT_EQ(StateOf(kPlayer), APP_MANAGER_ERROR_NO_SUCH_APP);
}

TEST_F(ApplicationsTest, UninstallTerminatesAndKeepsTheData) {
  Launch(kPlayer);
  set().applications().Uninstall(kPlayer);
  EXPECT_FALSE(set().applications().Find(kPlayer));
  EXPECT_FALSE(set().applications().State(kPlayer));
  EXPECT_TRUE(std::filesystem::is_directory(set().paths().app_data("ab12cd34ef")));
}

TEST_F(ApplicationsTest, FocusedContextNamesTheFocusedApplication) {
  Launch(kPlayer);
  app_context_h context = nullptr;
  ASSERT_EQ(app_manager_get_focused_app_context(&context), APP_MANAGER_ERROR_NONE);
  EXPECT_EQ(IdOf(context), kPlayer);
  EXPECT_EQ(app_context_destroy(context), APP_MANAGER_ERROR_NONE);
}

TEST_F(ApplicationsTest, NobodyFocusedIsNoSuchApplication) {
  Launch(kPlayer);
  set().applications().ClearFocus();
  app_context_h context = nullptr;
  EXPECT_EQ(app_manager_get_focused_app_context(&context), -17891327);
}

TEST_F(ApplicationsTest, ContextIsASnapshot) {
  Launch(kPlayer);
  app_context_h context = nullptr;
  ASSERT_EQ(app_manager_get_app_context(kPlayer, &context), APP_MANAGER_ERROR_NONE);
  set().applications().SetState(kPlayer, APP_STATE_BACKGROUND);
  set().applications().Terminate(kPlayer);
  app_state_e state = APP_STATE_UNDEFINED;
  pid_t pid = 0;
  EXPECT_EQ(app_context_get_app_state(context, &state), APP_MANAGER_ERROR_NONE);
  EXPECT_EQ(app_context_get_pid(context, &pid), APP_MANAGER_ERROR_NONE);
  EXPECT_EQ(state, APP_STATE_FOREGROUND);
  EXPECT_EQ(pid, getpid());
  EXPECT_EQ(app_context_destroy(context), APP_MANAGER_ERROR_NONE);
}

TEST_F(ApplicationsTest, ContextReportsEveryStateThatWasSet) {
  Install(kPlayer);
  for (const int state : {0, 1, 2, 3, 4, 5, 7}) {
    set().applications().SetState(kPlayer, state);
    EXPECT_EQ(StateOf(kPlayer), state);
  }
}

TEST_F(ApplicationsTest, StateThatNoContextCanReportIsRefused) {
  Install(kPlayer);
  EXPECT_THROW(set().applications().SetState(kPlayer, -1), SetError);
  EXPECT_THROW(set().applications().SetState(kPlayer, 8), SetError);
  EXPECT_FALSE(set().applications().State(kPlayer));
}

TEST_F(ApplicationsTest, ContextCallsRefuseNull) {
  app_context_h context = nullptr;
  app_state_e state{};
  pid_t pid = 0;
  char* id = nullptr;
  EXPECT_EQ(app_manager_get_app_context(nullptr, &context), -22);
  EXPECT_EQ(app_manager_get_app_context(kPlayer, nullptr), -22);
  EXPECT_EQ(app_manager_get_focused_app_context(nullptr), -22);
  EXPECT_EQ(app_context_get_app_id(nullptr, &id), -22);
  EXPECT_EQ(app_context_get_pid(nullptr, &pid), -22);
  EXPECT_EQ(app_context_get_app_state(nullptr, &state), -22);
  EXPECT_EQ(app_context_destroy(nullptr), -22);
}

TEST_F(ApplicationsTest, DestroyedAndInventedContextsAreRefused) {
  Launch(kPlayer);
  app_context_h context = nullptr;
  ASSERT_EQ(app_manager_get_app_context(kPlayer, &context), APP_MANAGER_ERROR_NONE);
  ASSERT_EQ(app_context_destroy(context), APP_MANAGER_ERROR_NONE);
  int place = 0;
  app_state_e state{};
  EXPECT_EQ(app_context_destroy(context), -22);
  EXPECT_EQ(app_context_get_app_state(context, &state), -22);
  EXPECT_EQ(app_context_destroy(reinterpret_cast<app_context_h>(&place)), -22);
}

TEST_F(ApplicationsTest, OpenContextsAreCounted) {
  Launch(kPlayer);
  app_context_h context = nullptr;
  ASSERT_EQ(app_manager_get_app_context(kPlayer, &context), APP_MANAGER_ERROR_NONE);
  EXPECT_EQ(set().open_app_contexts(), 1u);
  app_context_destroy(context);
  EXPECT_EQ(set().open_app_contexts(), 0u);
}

TEST_F(ApplicationsTest, ProcessIdGivesTheApplication) {
  Launch(kPlayer);
  char id[255] = {};
  EXPECT_EQ(aul_app_get_appid_bypid(getpid(), id, sizeof(id)), AUL_R_OK);
  EXPECT_STREQ(id, kPlayer);
}

TEST_F(ApplicationsTest, ProcessOfSeveralApplicationsIsTheLastLaunched) {
  Launch(kPlayer);
  Launch(kGuide);
  EXPECT_EQ(set().applications().IdOfPid(getpid()), kGuide);
  set().applications().Terminate(kGuide);
  EXPECT_EQ(set().applications().IdOfPid(getpid()), kPlayer);
}

TEST_F(ApplicationsTest, ProcessIdRefusesBadArguments) {
  char id[8] = {};
  EXPECT_EQ(aul_app_get_appid_bypid(0, id, sizeof(id)), AUL_R_EINVAL);
  EXPECT_EQ(aul_app_get_appid_bypid(-1, id, sizeof(id)), AUL_R_EINVAL);
  EXPECT_EQ(aul_app_get_appid_bypid(getpid(), nullptr, 8), AUL_R_EINVAL);
  EXPECT_EQ(aul_app_get_appid_bypid(getpid(), id, 0), AUL_R_EINVAL);
  EXPECT_EQ(aul_app_get_appid_bypid(getpid(), id, sizeof(id)), AUL_R_ERROR);
}

TEST_F(ApplicationsTest, LongIdIsCutToTheBufferAndTerminated) {
  Launch(kPlayer);
  char id[6] = {'#', '#', '#', '#', '#', '#'};
  EXPECT_EQ(aul_app_get_appid_bypid(getpid(), id, 5), AUL_R_OK);
  EXPECT_STREQ(id, "ab12");
  EXPECT_EQ(id[5], '#');
}

}  // namespace
}  // namespace tvset::testing
