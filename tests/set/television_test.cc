// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <app_context.h>
#include <app_context_manager.h>
#include <screensaver.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kPlayer[] = "ab12cd34ef.Player";
constexpr char kGuide[] = "gh56ij78kl.Guide";

using TelevisionTest = SetTest;

TEST_F(TelevisionTest, ContextTaskIsRecordedAndReported) {
  struct Tasks : Observer {
    void OnContextTask(const ContextTask& task) override {
      text += task.target + "," + task.action;
    }
    std::string text;
  } tasks;
  set().events().Add(&tasks);
  EXPECT_EQ(app_context_manager_init(), 0);
  EXPECT_EQ(app_context_manager_request_task("last:source", "launch"), 0);
  set().events().Remove(&tasks);
  EXPECT_EQ(tasks.text, "last:source,launch");
  ASSERT_EQ(set().context_manager().tasks().size(), 1u);
  EXPECT_EQ(set().context_manager().initialized(), 1);
}

TEST_F(TelevisionTest, ContextTaskNeedsInitialisation) {
  EXPECT_NE(app_context_manager_request_task("last:source", "launch"), 0);
  EXPECT_TRUE(set().context_manager().tasks().empty());
}

TEST_F(TelevisionTest, ContextTaskOutsideTheServiceIsRefused) {
  app_context_manager_init();
  EXPECT_NE(app_context_manager_request_task("next:source", "launch"), 0);
  EXPECT_NE(app_context_manager_request_task("last:source", "stop"), 0);
  EXPECT_EQ(app_context_manager_request_task(nullptr, "launch"), -22);
  EXPECT_EQ(app_context_manager_request_task("last:source", nullptr), -22);
  EXPECT_TRUE(set().context_manager().tasks().empty());
}

TEST_F(TelevisionTest, ScreenSaverKeepsWhatWasAsked) {
  EXPECT_EQ(screensaver_set_appid("com.example.art"), 0);
  EXPECT_EQ(screensaver_set_timeout(120), 0);
  EXPECT_EQ(screensaver_reset_timeout(), 0);
  EXPECT_EQ(screensaver_reset_timeout(), 0);
  const ScreenSaverState state = set().screen_saver().state();
  EXPECT_EQ(state.app_id, "com.example.art");
  EXPECT_EQ(state.timeout_seconds, 120);
  EXPECT_EQ(state.resets, 2u);
}

TEST_F(TelevisionTest, ScreenSaverRefusesNullAndNegativeTime) {
  EXPECT_EQ(screensaver_set_appid(nullptr), -22);
  EXPECT_EQ(screensaver_set_timeout(-1), -22);
  EXPECT_EQ(set().screen_saver().state().app_id, "DEFAULT");
}

TEST_F(TelevisionTest, KeyboardMovesWhenItsStyleIsDynamic) {
  InputMethod& keyboard = set().input_method();
  EXPECT_FALSE(keyboard.state().positioned);
  EXPECT_EQ(keyboard.SetPosition(960, 1080, 0), InputMethodResult::kDone);
  EXPECT_TRUE(keyboard.state().positioned);
  EXPECT_EQ(keyboard.state().x, 960);
  EXPECT_EQ(keyboard.state().y, 1080);
  EXPECT_EQ(keyboard.state().align, 0);
  keyboard.set_dynamic_style(false);
  EXPECT_EQ(keyboard.SetPosition(1, 1, 1), InputMethodResult::kNotDynamic);
  EXPECT_EQ(keyboard.state().x, 960);
}

TEST_F(TelevisionTest, KeyboardRefusesValuesOutOfRange) {
  InputMethod& keyboard = set().input_method();
  EXPECT_EQ(keyboard.SetPosition(-1, 0, 0), InputMethodResult::kInvalid);
  EXPECT_EQ(keyboard.SetPosition(0, -1, 0), InputMethodResult::kInvalid);
  EXPECT_EQ(keyboard.SetPosition(0, 0, -1), InputMethodResult::kInvalid);
  EXPECT_EQ(keyboard.SetPosition(0, 0, 9), InputMethodResult::kInvalid);
  EXPECT_EQ(keyboard.SetRecommendedWordsType(2), InputMethodResult::kInvalid);
  EXPECT_FALSE(keyboard.state().positioned);
}

TEST_F(TelevisionTest, KeyboardKeepsRecommendedWords) {
  InputMethod& keyboard = set().input_method();
  EXPECT_EQ(keyboard.SetRecommendedWordsType(1), InputMethodResult::kDone);
  keyboard.SetRecommendedWords({"one", "two"});
  EXPECT_TRUE(keyboard.state().recommended_words_enabled);
  EXPECT_EQ(keyboard.state().recommended_words, (std::vector<std::string>{"one", "two"}));
}

TEST_F(TelevisionTest, WindowKeepsWhatWasSet) {
  Launch(kPlayer);
  WindowManager& windows = set().windows();
  EXPECT_TRUE(windows.SetStackMode(kPlayer, StackMode::kBelow));
  EXPECT_TRUE(windows.SetHint(kPlayer, "key", "value"));
  EXPECT_TRUE(windows.MoveTo(kPlayer, 5, 0));
  EXPECT_EQ(windows.window(kPlayer).position, (std::pair<int, int>{5, 0}));
  EXPECT_TRUE(windows.SetQuarterPosition(kPlayer, 4));
  const Window window = windows.window(kPlayer);
  EXPECT_EQ(window.stack_mode, StackMode::kBelow);
  EXPECT_EQ(window.hints.at("key"), "value");
  EXPECT_EQ(window.quarter_position, 4);
  EXPECT_FALSE(window.position);
}

TEST_F(TelevisionTest, WindowOfAnApplicationThatDoesNotRunCannotBeSet) {
  Install(kPlayer);
  WindowManager& windows = set().windows();
  EXPECT_FALSE(windows.SetStackMode(kPlayer, StackMode::kAbove));
  EXPECT_FALSE(windows.SetHint(kPlayer, "key", "value"));
  EXPECT_FALSE(windows.MoveTo(kPlayer, 1, 1));
  EXPECT_FALSE(windows.SetQuarterPosition(kPlayer, 1));
  EXPECT_FALSE(windows.SetFocusWanted(kPlayer, true));
  EXPECT_EQ(windows.topmost(), "");
}

TEST_F(TelevisionTest, QuarterPositionsAreFive) {
  Launch(kPlayer);
  for (const int position : {0, 1, 2, 3, 4}) {
    EXPECT_TRUE(set().windows().SetQuarterPosition(kPlayer, position));
  }
  EXPECT_FALSE(set().windows().SetQuarterPosition(kPlayer, -1));
  EXPECT_FALSE(set().windows().SetQuarterPosition(kPlayer, 5));
}

TEST_F(TelevisionTest, FocusFollowsTheWindowsWish) {
  Launch(kPlayer);
  EXPECT_TRUE(set().windows().SetFocusWanted(kPlayer, false));
  EXPECT_EQ(set().applications().focused(), "");
  EXPECT_FALSE(set().windows().window(kPlayer).focus_wanted);
  EXPECT_TRUE(set().windows().SetFocusWanted(kPlayer, true));
  EXPECT_EQ(set().applications().focused(), kPlayer);
}

TEST_F(TelevisionTest, WindowThatGivesUpFocusLeavesThatOfAnother) {
  Launch(kPlayer);
  Launch(kGuide);
  set().windows().SetFocusWanted(kPlayer, false);
  EXPECT_EQ(set().applications().focused(), kGuide);
}

TEST_F(TelevisionTest, StackFollowsModeThenOrderOfRaising) {
  Launch(kPlayer);
  Launch(kGuide);
  set().applications().SetState(kPlayer, APP_STATE_FOREGROUND);
  EXPECT_EQ(set().windows().stack(), (std::vector<std::string>{kGuide, kPlayer}));
  set().windows().SetStackMode(kGuide, StackMode::kBelow);
  EXPECT_EQ(set().windows().topmost(), kPlayer);
  set().windows().SetStackMode(kPlayer, StackMode::kBelow);
  EXPECT_EQ(set().windows().topmost(), kGuide);
  set().applications().SetState(kGuide, APP_STATE_SERVICE);
  EXPECT_EQ(set().windows().stack(), (std::vector<std::string>{kPlayer}));
}

TEST_F(TelevisionTest, TerminationForgetsTheWindow) {
  Launch(kPlayer);
  set().windows().SetHint(kPlayer, "key", "value");
  set().applications().Terminate(kPlayer);
  set().applications().Launch(kPlayer, 1);
  EXPECT_TRUE(set().windows().window(kPlayer).hints.empty());
}

}  // namespace
}  // namespace tvset::testing
