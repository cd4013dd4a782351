// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/events.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <dlog.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

// Writes down what happened, in order.
class Recorder : public Observer {
 public:
  Recorder() { Set::Instance().events().Add(this); }
  ~Recorder() override { Set::Instance().events().Remove(this); }

  void OnLogLine(const LogLine& line) override { Add("log " + line.text); }
  void OnApplicationChanged(const std::string& app) override { Add("application " + app); }
  void OnFocusChanged(const std::string& app) override { Add("focus " + app); }
  void OnFeatureChanged(const std::string& key) override { Add("feature " + key); }
  void OnWindowChanged() override { Add("window"); }
  void OnInputMethodChanged() override { Add("input method"); }
  void OnScreenSaverChanged() override { Add("screen saver"); }
  void OnKeyGrabsChanged() override { Add("grabs"); }

  std::vector<std::string> Take() {
    std::lock_guard<std::mutex> lock(mutex_);
    return std::move(events_);
  }

 private:
  void Add(std::string event) {
    std::lock_guard<std::mutex> lock(mutex_);
    events_.push_back(std::move(event));
  }

  std::mutex mutex_;
  std::vector<std::string> events_;
};

using EventsTest = SetTest;
using Events = std::vector<std::string>;

TEST_F(EventsTest, ObserverHearsOfLogLines) {
  Recorder recorder;
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
  EXPECT_EQ(recorder.Take(), Events{"log text"});
}

TEST_F(EventsTest, ObserverHearsOfApplicationsAndFocus) {
  Install("a.x");
  Install("b.x");
  Recorder recorder;
  set().applications().Launch("a.x", 1);
  EXPECT_EQ(recorder.Take(), (Events{"application a.x", "focus a.x"}));
  set().applications().Launch("b.x", 1);
  EXPECT_EQ(recorder.Take(), (Events{"application a.x", "application b.x", "focus b.x"}));
  set().applications().SetFocus("a.x");
  EXPECT_EQ(recorder.Take(), (Events{"application a.x", "focus a.x"}));
  set().applications().Terminate("a.x");
  EXPECT_EQ(recorder.Take(), (Events{"application a.x", "focus "}));
}

TEST_F(EventsTest, ObserverHearsOfEveryService) {
  Launch("a.x");
  Recorder recorder;
  set().features().Set("a.b/c", "int", "1", FeatureGroup::kCustom);
  set().windows().MoveTo("a.x", 1, 2);
  set().input_method().SetPosition(1, 2, 3);
  set().screen_saver().ResetTimeout();
  set().key_grabs().Grab("a.x", "XF86Red", GrabMode::kNormal);
  set().applications().Terminate("a.x");
  EXPECT_EQ(recorder.Take(), (Events{"feature a.b/c", "window", "input method", "screen saver",
                                     "grabs", "grabs", "window", "application a.x", "focus "}));
}

TEST_F(EventsTest, EveryObserverIsTold) {
  Recorder first;
  Recorder second;
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
  EXPECT_EQ(first.Take(), Events{"log text"});
  EXPECT_EQ(second.Take(), Events{"log text"});
}

TEST_F(EventsTest, ObserverStaysOverARestart) {
  Recorder recorder;
  StartSet();
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
  EXPECT_EQ(recorder.Take(), Events{"log text"});
}

TEST_F(EventsTest, ObserverMayCallTheSetBack) {
  struct Caller : Observer {
    void OnFeatureChanged(const std::string& key) override {
      value = Set::Current().features().Find(key, "string", FeatureGroup::kCustom).value_or("");
      Set::Current().screen_saver().ResetTimeout();
    }
    std::string value;
  } caller;
  set().events().Add(&caller);
  set().features().Set("a.b/c", "string", "new", FeatureGroup::kCustom);
  set().events().Remove(&caller);
  EXPECT_EQ(caller.value, "new");
  EXPECT_EQ(set().screen_saver().state().resets, 1u);
}

TEST_F(EventsTest, LineLoggedByALogObserverIsNotReportedAgain) {
  struct Echo : Observer {
    void OnLogLine(const LogLine& line) override {
      ++lines;
      __dlog_print(LOG_ID_MAIN, DLOG_INFO, "ECHO", "%s", line.text.c_str());
    }
    int lines = 0;
  } echo;
  set().events().Add(&echo);
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
  set().events().Remove(&echo);
  EXPECT_EQ(echo.lines, 1);
  EXPECT_EQ(set().log().lines().size(), 2u);
}

TEST_F(EventsTest, ObserverMayRemoveItself) {
  struct Once : Observer {
    void OnLogLine(const LogLine&) override {
      ++lines;
      Set::Instance().events().Remove(this);
    }
    int lines = 0;
  } once;
  set().events().Add(&once);
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "one");
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "two");
  EXPECT_EQ(once.lines, 1);
  EXPECT_TRUE(set().events().empty());
}

TEST_F(EventsTest, ObserverRemovedByAnotherIsNotCalled) {
  struct Remover : Observer {
    explicit Remover(Observer* other) : other_(other) {}
    void OnLogLine(const LogLine&) override { Set::Instance().events().Remove(other_); }
    Observer* other_;
  };
  struct Counter : Observer {
    void OnLogLine(const LogLine&) override { ++lines; }
    int lines = 0;
  } counter;
  Remover remover(&counter);
  set().events().Add(&remover);
  set().events().Add(&counter);
  __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
  set().events().Remove(&remover);
  EXPECT_EQ(counter.lines, 0);
}

TEST_F(EventsTest, RemoveOfAnUnknownObserverDoesNothing) {
  Observer stranger;
  set().events().Remove(&stranger);
  EXPECT_TRUE(set().events().empty());
}

// Stays inside its first call until it is let go.
class Blocker : public Observer {
 public:
  void OnLogLine(const LogLine&) override {
    std::unique_lock<std::mutex> lock(mutex_);
    inside_ = true;
    changed_.notify_all();
    changed_.wait(lock, [this] { return released_; });
    finished = true;
  }
  void AwaitInside() {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [this] { return inside_; });
  }
  void Release() {
    std::lock_guard<std::mutex> lock(mutex_);
    released_ = true;
    changed_.notify_all();
  }
  std::atomic<bool> finished{false};

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool inside_ = false;
  bool released_ = false;
};

TEST_F(EventsTest, RemoveWaitsForACallThatRuns) {
  Blocker blocker;
  set().events().Add(&blocker);
  std::thread logging([] { __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text"); });
  blocker.AwaitInside();
  bool finished_at_removal = false;
  std::thread removing([&] {
    Set::Instance().events().Remove(&blocker);
    finished_at_removal = blocker.finished;
  });
  blocker.Release();
  removing.join();
  logging.join();
  EXPECT_TRUE(finished_at_removal);
}

TEST_F(EventsTest, ObserversComeAndGoWhileThreadsLog) {
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&stop] {
      while (!stop) __dlog_print(LOG_ID_MAIN, DLOG_INFO, "TAG", "text");
    });
  }
  for (int i = 0; i < 200; ++i) {
    Recorder recorder;
    recorder.Take();
  }
  stop = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(set().events().empty());
}

}  // namespace
}  // namespace tvset::testing
