// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Many pages with many calls on their way at once, opened and closed in an order that a seed gives.
// A reply that reached another page, or came twice, would be one that no call there waits for,
// which a page says on its console; one that was lost would leave its call without an answer.

#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "page_world.h"

namespace orvane::test {
namespace {

constexpr int kPages = 50;
constexpr int kCallsPerPage = 200;
constexpr size_t kOpenAtOnce = 8;
constexpr std::chrono::seconds kLimit(100);

class AsyncStorm : public PageWorldTest {
 protected:
  struct OpenPage {
    std::unique_ptr<page::Page> page;
    int calls = 0;
  };

  OpenPage Open() {
    OpenPage open{MakePage(), 0};
    EXPECT_FALSE(open.page->Evaluate(storm_, "storm.js"));
    return open;
  }

  void Call(OpenPage& open, int count) {
    EXPECT_FALSE(open.page->Evaluate("storm.start(" + std::to_string(count) + ")", "test"));
    open.calls += count;
    calls_made_ += count;
  }

  static int Answered(OpenPage& open, int times) {
    const std::string script = "storm.answered(" + std::to_string(times) + ")";
    return std::stoi(EvaluateToJson(*open.page, script, "test").json);
  }

  void ExpectEachCallAnsweredOnce(OpenPage& open) {
    EXPECT_TRUE(open.page->RunUntilIdle(kLimit));
    EXPECT_EQ(Answered(open, 1), open.calls);
  }

  size_t Pick(size_t count) { return std::uniform_int_distribution<size_t>(0, count - 1)(random_); }

  const std::string storm_ = ReadFile(ORVANE_TEST_SCRIPTS "/storm.js");
  std::mt19937 random_{20161120};
  int calls_made_ = 0;
};

TEST_F(AsyncStorm, AnswersEachCallOnceOnItsOwnPage) {
  std::vector<OpenPage> pages;
  for (size_t i = 0; i < kOpenAtOnce; ++i) {
    pages.push_back(Open());
  }

  for (int round = 0; round < kCallsPerPage / 20; ++round) {
    for (OpenPage& open : pages) {
      Call(open, 20);
    }
  }

  for (OpenPage& open : pages) {
    ExpectEachCallAnsweredOnce(open);
    EXPECT_EQ(Answered(open, 0), 0);
  }
  EXPECT_EQ(console().warnings(), 0);
}

TEST_F(AsyncStorm, LosesNoReplyOfTheOthersWhenPagesCloseAtRandom) {
  std::vector<OpenPage> pages;
  int opened = 0;
  while (opened < kPages || !pages.empty()) {
    if (opened < kPages && pages.size() < kOpenAtOnce) {
      pages.push_back(Open());
      Call(pages.back(), kCallsPerPage);
      ++opened;
      continue;
    }
    const size_t chosen = Pick(pages.size());
    // Half of the pages close with calls on their way, the others when all are answered.
    if (Pick(2) == 0) {
      ExpectEachCallAnsweredOnce(pages[chosen]);
    }
    pages.erase(pages.begin() + static_cast<std::ptrdiff_t>(chosen));
  }

  EXPECT_EQ(calls_made_, kPages * kCallsPerPage);
  EXPECT_EQ(console().warnings(), 0);
}

}  // namespace
}  // namespace orvane::test
