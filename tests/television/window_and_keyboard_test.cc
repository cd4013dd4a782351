// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "services_fixture.h"

namespace orvane::television {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::Pair;

constexpr char kWordsType[] = "dravelt://orvane/setIMERecommendedType";
constexpr char kWords[] = "dravelt://orvane/setIMERecommendedWords";
constexpr char kPosition[] = "dravelt://orvane/setIMEPosition";
constexpr char kFocus[] = "tizen://setFocus";
constexpr char kStackMode[] = "tizen://setWindowStackMode";
constexpr char kHint[] = "dravelt://orvane/setAuxHint";

class KeyboardTest : public ServicesFixture {
 protected:
  tvset::InputMethodState state() { return set().input_method().state(); }
};

TEST_F(KeyboardTest, MovesTheKeyboard) {
  ExpectDone(kPosition, "192,20,0");
  EXPECT_TRUE(state().positioned);
  EXPECT_EQ(state().x, 192);
  EXPECT_EQ(state().y, 20);
  EXPECT_EQ(state().align, 0);
}

TEST_F(KeyboardTest, RefusesToMoveAKeyboardWhoseStyleIsNotDynamic) {
  set().input_method().set_dynamic_style(false);
  ExpectRefused(kPosition, "960,1080,7", "not dynamic", "notsupportederror");
  EXPECT_FALSE(state().positioned);
}

TEST_F(KeyboardTest, RefusesMalformedPositions) {
  for (const char* text :
       {"", "960", "960,1080", "960,1080,7,1", "960,1080,9", "960,1080,-1", "-1,0,0", "0,-1,0",
        "1.5,0,0", "1e21,0,0", "99999999999,0,0", "NaN,0,0", " 1,2,3", "1,2,3 ", "1,,3"}) {
    ExpectRefused(kPosition, text, "is not x, y");
  }
  EXPECT_FALSE(state().positioned);
}

TEST_F(KeyboardTest, SwitchesRecommendedWords) {
  EXPECT_TRUE(services_.Send(kWordsType, "1"));
  EXPECT_TRUE(state().recommended_words_enabled);
  EXPECT_TRUE(services_.Send(kWordsType, "0"));
  EXPECT_FALSE(state().recommended_words_enabled);
}

TEST_F(KeyboardTest, RefusesOtherTypesOfRecommendedWords) {
  for (const char* text :
       {"2", "-1", "", "true", "1 ", "01x", "+1", " 1", "1.0", "0x1", "1e0", "-", "4294967297"}) {
    ExpectRefused(kWordsType, text, "is neither 0");
    EXPECT_FALSE(services_.Send(kWordsType, text)) << text;
  }
}

TEST_F(KeyboardTest, TakesRecommendedWords) {
  EXPECT_TRUE(services_.Send(kWords, "news,télé,,sport"));
  EXPECT_THAT(state().recommended_words, ElementsAre("news", "télé", "", "sport"));
}

TEST_F(KeyboardTest, AnEmptyTextClearsRecommendedWords) {
  services_.Send(kWords, "news");
  EXPECT_TRUE(services_.Send(kWords, ""));
  EXPECT_THAT(state().recommended_words, IsEmpty());
}

TEST_F(KeyboardTest, RefusesTooManyRecommendedWords) {
  ExpectRefused(kWords, std::string(1000, ','), "more than 1000 words");
  explanations_.clear();
  ExpectDone(kWords, std::string(999, ','));
}

class WindowTest : public ServicesFixture {
 protected:
  tvset::Window window() { return set().windows().window(kApp); }
};

TEST_F(WindowTest, GivesUpTheFocusAndTakesItBack) {
  ExpectDone(kFocus, "false");
  EXPECT_NE(set().applications().focused(), kApp);
  EXPECT_FALSE(window().focus_wanted);

  ExpectDone(kFocus, "true");
  EXPECT_EQ(set().applications().focused(), kApp);
}

TEST_F(WindowTest, RefusesAnotherFocusState) {
  for (const char* text : {"", "1", "True", "true "}) ExpectRefused(kFocus, text, "is neither");
}

TEST_F(WindowTest, StacksTheWindow) {
  set().applications().SetState(kOtherApp, 1);  // shown too
  EXPECT_EQ(set().windows().topmost(), kApp);

  ExpectDone(kStackMode, "BELOW");
  EXPECT_EQ(window().stack_mode, tvset::StackMode::kBelow);
  EXPECT_EQ(set().windows().topmost(), kOtherApp);
  ExpectDone(kStackMode, "ABOVE");
  EXPECT_EQ(window().stack_mode, tvset::StackMode::kAbove);
  ExpectDone(kStackMode, "NONE");
  EXPECT_EQ(window().stack_mode, tvset::StackMode::kNone);
}

TEST_F(WindowTest, RefusesAnotherStackMode) {
  for (const char* text : {"", "above", "TOP"}) ExpectRefused(kStackMode, text, "is none of");
}

TEST_F(WindowTest, SetsAHintWithCommasInItsValue) {
  std::string answer;
  services_.SendAsync(kHint, "wm.policy.win.zone,a,b,",
                      [&](const std::string& text) { answer = text; });
  EXPECT_EQ(answer, R"({"status":"success"})");
  EXPECT_THAT(window().hints, ElementsAre(Pair("wm.policy.win.zone", "a,b,")));
}

TEST_F(WindowTest, RefusesAHintWithoutAKeyOrAComma) {
  for (const std::string& text :
       {std::string(), std::string("key"), std::string(",value"), std::string(300, 'k') + ",v"}) {
    ExpectRefused(kHint, text, "is not a hint's key");
  }
}

TEST_F(WindowTest, KeepsABoundedNumberOfHints) {
  for (int i = 0; i < 256; ++i) ExpectDone(kHint, "k" + std::to_string(i) + ",v");
  ExpectRefused(kHint, "one.more,v", "256 hints already");
  explanations_.clear();
  ExpectDone(kHint, "k0,changed");
  EXPECT_EQ(window().hints["k0"], "changed");
}

TEST_F(WindowTest, MovesTheWindow) {
  EXPECT_EQ(services_.MoveWindow(5, 0), "success");
  EXPECT_THAT(window().position, Optional(Pair(5, 0)));
}

TEST_F(WindowTest, SetsAQuarterPosition) {
  EXPECT_EQ(services_.SetQuarterPosition(4), "success");
  EXPECT_THAT(window().quarter_position, Optional(4));
}

TEST_F(WindowTest, RefusesAQuarterPositionThatThereIsNot) {
  for (const int position : {-1, 5, 2147483647}) {
    EXPECT_THAT(services_.SetQuarterPosition(position), HasSubstr("no quarter position"));
  }
  EXPECT_EQ(explanations_.size(), 3U);
}

TEST_F(WindowTest, RefusesEverythingForAnApplicationThatDoesNotRun) {
  set().applications().Terminate(kApp);
  ExpectRefused(kFocus, "true", "does not run");
  ExpectRefused(kStackMode, "ABOVE", "does not run");
  ExpectRefused(kHint, "k,v", "does not run");
  EXPECT_THAT(services_.MoveWindow(0, 0), HasSubstr("does not run"));
  EXPECT_THAT(services_.SetQuarterPosition(0), HasSubstr("does not run"));
}

}  // namespace
}  // namespace orvane::television
