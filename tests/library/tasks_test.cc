// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <future>
#include <thread>

#include "common/task-queue.h"
#include "library_fixture.h"
#include "orvane/orvane_instance.h"
#include "orvane/orvane_manager.h"

namespace orvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr char kProfilingKey[] = "memory/runningApps/performance_data";

// What every asynchronous call has in common.
class TasksTest : public LibraryFixture {
 protected:
  // Keeps the worker busy until the test lets go.
  class Blocker {
   public:
    Blocker() {
      common::TaskQueue::GetInstance().Queue<int>(
          [this](const std::shared_ptr<int>& /*data*/) { released_.get_future().wait(); },
          [](const std::shared_ptr<int>& /*data*/) {}, [] {}, nullptr);
    }
    ~Blocker() { Release(); }
    Blocker(const Blocker&) = delete;
    Blocker& operator=(const Blocker&) = delete;

    void Release() {
      if (!is_released_) {
        is_released_ = true;
        released_.set_value();
      }
    }

   private:
    std::promise<void> released_;
    bool is_released_ = false;
  };
};

struct AsynchronousCall {
  const char* method;
  const char* arguments;  // without the callback id
  const char* finalised;
};

constexpr AsynchronousCall kCalls[] = {
    {"getSystemStat", R"("resource":"CPU")", "Finalizing GetCpuStat task with callback id="},
    {"getSystemStat", R"("resource":"MEMORY")", "Finalizing GetMemoryStat task with callback id="},
    {"setScreenSaver", R"("state":1)", "Finalizing SetScreenSaver task with callback id="},
    {"recordProfiling", R"("label":"x")", "Finalizing RecordProfiling task with callback id="},
};

TEST_F(TasksTest, NeedACallbackId) {
  for (const AsynchronousCall& call : kCalls) {
    ExpectError(call.method, "{" + std::string(call.arguments) + "}", 17, "TypeMismatchError",
                "callbackId is required argument");
  }
  ExpectError("setScreenSaver", "{}", 17, "TypeMismatchError", "callbackId is required argument");
  AwaitIdleWorker();
  EXPECT_THAT(host_.posts(instance_), IsEmpty());
}

TEST_F(TasksTest, NeedTheirOwnArguments) {
  ExpectError("setScreenSaver", R"({"callbackId":1})", 17, "TypeMismatchError",
              "state is required argument");
  ExpectError("recordProfiling", R"({"callbackId":1})", 17, "TypeMismatchError",
              "label is required argument");
  AwaitIdleWorker();
  EXPECT_THAT(host_.posts(instance_), IsEmpty());
}

TEST_F(TasksTest, CarryTheCallbackIdBackUnchanged) {
  const std::pair<const char*, const char*> kIds[] = {
      {"0", "0"},
      {"-7", "-7"},
      {"0.5", "0.5"},
      {"-2.25", "-2.25"},
      {"9007199254740992", "9007199254740992"},
      {"4294967296", "4294967296"},
      {"1e300", "1.0000000000000001e+300"},
  };
  for (const auto& [sent, answered] : kIds) {
    Start("setScreenSaver", R"({"callbackId":)" + std::string(sent) + R"(,"state":1})");
    EXPECT_EQ(AwaitReply(),
              R"({"callbackId":)" + std::string(answered) + R"(,"result":{},"status":"success"})");
  }
}

TEST_F(TasksTest, AreFinalisedWithTheIdAsAnInteger) {
  const std::pair<const char*, const char*> kIds[] = {{"7", "7"},
                                                      {"-7.9", "-7"},
                                                      {"0.5", "0"},
                                                      {"9007199254740992", "2147483647"},
                                                      {"-1e300", "-2147483648"}};
  for (const AsynchronousCall& call : kCalls) {
    for (const auto& [sent, logged] : kIds) {
      Start(call.method, R"({"callbackId":)" + std::string(sent) + "," + call.arguments + "}");
      AwaitIdleWorker();
      EXPECT_THAT(
          Messages(),
          Contains("D orvane_manager.cc operator(): " + std::string(call.finalised) + logged));
      ClearLog();
    }
  }
}

TEST_F(TasksTest, AnswerInTheOrderOfTheCalls) {
  for (int id = 0; id < 20; ++id) {
    Start("recordProfiling", R"({"callbackId":)" + std::to_string(id) + R"(,"label":"x"})");
  }
  for (int id = 0; id < 20; ++id) {
    EXPECT_EQ(AwaitReply(),
              R"({"callbackId":)" + std::to_string(id) + R"(,"result":{},"status":"success"})");
  }
}

TEST_F(TasksTest, LogTheScopeOfTheQueue) {
  Start("setScreenSaver", R"({"callbackId":1,"state":1})");
  std::vector<std::string> texts;
  for (const tvset::LogLine& line : set().log().lines()) {
    if (line.tag == "WEBAPI_PLUGINS" && line.priority == DLOG_DEBUG) {
      texts.push_back(line.text);
    }
  }
  EXPECT_THAT(texts,
              ElementsAre(::testing::MatchesRegex(
                              "logger.h: ScopeLogger > task-queue.h: Queue\\([0-9]+\\) > Enter "),
                          "logger.h: ~ScopeLogger(288) > task-queue.h: Queue > Exit"));
}

TEST_F(TasksTest, DelayTheInstancesEndUntilTheyAreFinalised) {
  Blocker blocker;
  Start("recordProfiling", R"({"callbackId":1,"label":"late"})");
  Start("getSystemStat", R"({"callbackId":2,"resource":"MEMORY"})");
  ClearLog();
  std::thread releaser([&blocker] { blocker.Release(); });
  CloseInstance();
  releaser.join();

  const std::vector<std::string> messages = Messages();
  const auto position = [&messages](const std::string& message) {
    return std::find(messages.begin(), messages.end(), message) - messages.begin();
  };
  const auto destructor = position("D orvane_timermanager.cc ~TimerManager: Enter destructor");
  EXPECT_LT(
      position(
          "D orvane_manager.cc operator(): Finalizing RecordProfiling task with callback id=1"),
      destructor);
  EXPECT_LT(
      position("D orvane_manager.cc operator(): Finalizing GetMemoryStat task with callback id=2"),
      destructor);
  EXPECT_LT(destructor, static_cast<std::ptrdiff_t>(messages.size()));
  EXPECT_EQ(host_.dropped_posts(), 0);
  EXPECT_EQ(set().settings().GetString(kProfilingKey), "");
}

TEST_F(TasksTest, AreCountedUntilTheyAreFinalised) {
  extension::orvane::TaskCounter counter;
  EXPECT_EQ(counter.count, 0);
  counter.WaitUntilIdle();
  // The end of a task may be counted before its start.
  std::thread worker([&counter] { counter.Add(-1); });
  counter.Add(1);
  counter.WaitUntilIdle();
  worker.join();
  EXPECT_EQ(counter.count, 0);
}

TEST_F(TasksTest, CannotBeQueuedEmpty) {
  std::promise<void> finalised;
  common::TaskQueue::GetInstance().Queue<int>(
      nullptr, nullptr, [&finalised] { finalised.set_value(); }, nullptr);
  finalised.get_future().wait();
  AwaitIdleWorker();
  ASSERT_FALSE(set().log().lines().empty());
  bool logged = false;
  for (const tvset::LogLine& line : set().log().lines()) {
    logged = logged || (line.priority == DLOG_ERROR &&
                        line.text.find("bad_function_call") != std::string::npos);
  }
  EXPECT_TRUE(logged);
}

TEST_F(TasksTest, EndWithTheirInstanceAlone) {
  const XW_Instance other = host_.Create();
  Start("recordProfiling", R"({"callbackId":1,"label":"x"})");
  host_.Destroy(other);
  EXPECT_EQ(AwaitReply(), R"({"callbackId":1,"result":{},"status":"success"})");
}

TEST_F(TasksTest, ClosingAnyInstanceClearsTheProfilingRecord) {
  set().settings().SetString(kProfilingKey, "somebody's");
  CloseInstance();
  EXPECT_EQ(set().settings().GetString(kProfilingKey), "");
}

TEST_F(TasksTest, ClosingGoesOnWhenTheRecordCannotBeCleared) {
  Fail("vconf_set_str");
  CloseInstance();
  EXPECT_THAT(Messages(),
              Contains("I CommonUtil.cc RecordProfiling: Fail to set the vonf value, key = "
                       "[memory/runningApps/performance_data]"));
}

TEST_F(TasksTest, ClosingLogsInTheOrderOfDestruction) {
  CloseInstance();
  EXPECT_THAT(
      Messages(),
      ElementsAre("D orvane_instance.cc ~OrvaneInstance: Entered ~OrvaneInstance, Params: None",
                  "I CommonUtil.cc RecordProfiling: Success to recordProfiling",
                  "D orvane_timermanager.cc ~TimerManager: Enter destructor"));
}

}  // namespace
}  // namespace orvane::test
