// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <thread>

#include <JavaScriptCore/JavaScript.h>

#include "page_fixture.h"

namespace orvane::page {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

// Timers and the loop, with a clock that jumps to the next timer.
class PageLoop : public PageTest {
 protected:
  PageLoop() {
    clock_ = &jumping_clock_;
    Run("var order = []; const note = (name) => () => { order.push(name); };");
  }

  std::string Order() { return Run("order.join(' ')"); }
};

TEST_F(PageLoop, IsIdleWithoutWork) { EXPECT_TRUE(page().RunUntilIdle(milliseconds(0))); }

TEST_F(PageLoop, RunsTimersByTheirTime) {
  RunToEnd("setTimeout(note('late'), 50); setTimeout(note('early'), 10); setTimeout(note('now'))");
  EXPECT_EQ(Order(), "\"now early late\"");
}

TEST_F(PageLoop, RunsScriptThenMicrotasksThenTimers) {
  RunToEnd(
      "setTimeout(note('timer')); Promise.resolve().then(note('promise')); "
      "queueMicrotask(note('micro'));"
      "note('script')()");
  EXPECT_EQ(Order(), "\"script promise micro timer\"");
}

TEST_F(PageLoop, RunsMicrotasksBetweenTimers) {
  RunToEnd(
      "setTimeout(() => { note('a')(); queueMicrotask(note('between')); }); setTimeout(note('b'))");
  EXPECT_EQ(Order(), "\"a between b\"");
}

TEST_F(PageLoop, RunsATimerSetByATimerAfterThoseThatWait) {
  RunToEnd("setTimeout(() => { setTimeout(note('nested')); }); setTimeout(note('second'))");
  EXPECT_EQ(Order(), "\"second nested\"");
}

TEST_F(PageLoop, PassesArgumentsToTimers) {
  EXPECT_EQ(RunToEnd("var sum = 0; setTimeout((a, b) => { sum = a + b; }, 5, 1, 2)"), "1");
  EXPECT_EQ(Run("sum"), "3");
}

TEST_F(PageLoop, RunsLongTimersAtTheirTime) {
  const auto start = jumping_clock_.Now();
  EXPECT_FALSE(
      (Run("setTimeout(note('hour'), 3600000)"), page().RunUntilIdle(milliseconds(3599999))));
  EXPECT_TRUE(page().RunUntilIdle(milliseconds(1)));
  EXPECT_EQ(jumping_clock_.Now() - start, milliseconds(3600000));
}

TEST_F(PageLoop, TakesDelaysAsBrowsersDo) {
  RunToEnd(
      "setTimeout(note('soon'), 1); setTimeout(note('huge'), 2 ** 32); setTimeout(note('text'), "
      "'x');"
      "setTimeout(note('negative'), -5)");
  EXPECT_EQ(Order(), "\"huge text negative soon\"");
}

TEST_F(PageLoop, StopsClearedTimers) {
  RunToEnd(
      "clearTimeout(setTimeout(note('no'))); clearTimeout(12345); clearTimeout(undefined);"
      "const second = setTimeout(note('never'), 10); setTimeout(() => clearTimeout(second))");
  EXPECT_EQ(Order(), "\"\"");
}

TEST_F(PageLoop, RepeatsAnIntervalUntilItIsCleared) {
  RunToEnd(
      "let runs = 0; const timer = setInterval(() => { runs += 1; note(runs)();"
      "if (runs === 3) clearInterval(timer); }, 10)");
  EXPECT_EQ(Order(), "\"1 2 3\"");
}

TEST_F(PageLoop, GivesUpAtTheLimitWhenAnIntervalGoesOn) {
  Run("setInterval(note('tick'), 10)");
  EXPECT_FALSE(page().RunUntilIdle(milliseconds(35)));
  EXPECT_EQ(Order(), "\"tick tick tick\"");
}

TEST_F(PageLoop, RefusesTimersWithoutAFunction) {
  EXPECT_EQ(Run("setTimeout('alert(1)', 0)"),
            "threw TypeError: setTimeout needs a function, but got the string \"alert(1)\".");
  EXPECT_EQ(Run("queueMicrotask(null)"),
            "threw TypeError: queueMicrotask needs a function, but got null.");
}

TEST_F(PageLoop, LeavesOtherPagesAloneWhenOnePageRuns) {
  const auto other = MakePage();
  Run(*other, "var done = false; setTimeout(() => { done = true; })");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_EQ(Run(*other, "done"), "false");
}

TEST_F(PageLoop, DropsTheTimersOfAClosedPage) {
  auto other = MakePage();
  Run(*other, "setTimeout(() => { throw new Error('late'); })");
  other.reset();
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_THAT(errors_.Take(), IsEmpty());
}

// Leaves an object in the page that counts its own end.
void LeaveTrace(Page& page, int* ended) {
  JSClassDefinition definition = kJSClassDefinitionEmpty;
  definition.finalize = [](JSObjectRef object) {
    ++*static_cast<int*>(JSObjectGetPrivate(object));
  };
  JSClassRef trace_class = JSClassCreate(&definition);
  JSStringRef name = JSStringCreateWithUTF8CString("trace");
  JSObjectSetProperty(page.context(), JSContextGetGlobalObject(page.context()), name,
                      JSObjectMake(page.context(), trace_class, ended), kJSPropertyAttributeNone,
                      nullptr);
  JSStringRelease(name);
  JSClassRelease(trace_class);
}

TEST_F(PageLoop, LeavesNothingOfClosedPages) {
  int ended = 0;
  // The engine collects when it likes; one page that something holds on to is not the same as all.
  for (int opened = 0; opened < 2000 && ended == 0; ++opened) {
    const auto closing = MakePage();
    LeaveTrace(*closing, &ended);
    Run(*closing, "setTimeout(() => {}); console.log('x'); Promise.resolve().then(() => {})");
  }
  EXPECT_GT(ended, 0);
  page_.reset();
  runtime_.reset();
}

TEST(PageWorkQueueTest, WakesTheWaitingThread) {
  PageWorkQueue work_queue;
  std::thread sender([&work_queue] { work_queue.Post([](PageCore&) {}); });
  Clock& clock = Clock::Monotonic();
  clock.WaitForWork(work_queue, clock.Now() + std::chrono::minutes(1));
  EXPECT_EQ(work_queue.TakeAll().size(), 1u);
  sender.join();
}

}  // namespace
}  // namespace orvane::page
