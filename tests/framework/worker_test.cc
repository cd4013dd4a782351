// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/worker.h"

#include <atomic>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "common/task_queue.h"
#include "set_fixture.h"

namespace orvane::test {
namespace {

using common::Worker;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const auto kNothing = [] {};

TEST(Worker, RunsJobsInOrderEachWithItsFinaliserBehindIt) {
  std::vector<std::string> order;
  {
    Worker worker;
    worker.add_job([&] { order.push_back("job 1"); }, [&] { order.push_back("finaliser 1"); });
    worker.add_job([&] { order.push_back("job 2"); }, [&] { order.push_back("finaliser 2"); });
  }
  EXPECT_THAT(order, ElementsAre("job 1", "finaliser 1", "job 2", "finaliser 2"));
}

TEST(Worker, RunsEverythingOnOneThreadOfItsOwn) {
  std::vector<std::thread::id> threads;
  {
    Worker worker;
    const auto note = [&threads] { threads.push_back(std::this_thread::get_id()); };
    worker.add_job(note, note);
    worker.add_job(note, note);
  }
  ASSERT_EQ(threads.size(), 4U);
  EXPECT_NE(threads[0], std::this_thread::get_id());
  for (const std::thread::id& thread : threads) {
    EXPECT_EQ(thread, threads[0]);
  }
}

TEST(Worker, DestructionRunsWhatIsQueued) {
  std::promise<void> go;
  int finalised = 0;
  {
    Worker worker;
    worker.add_job([&go] { go.get_future().wait(); }, kNothing);
    for (int i = 0; i < 100; ++i) {
      worker.add_job(kNothing, [&finalised] { ++finalised; });
    }
    go.set_value();
  }
  EXPECT_EQ(finalised, 100);
}

TEST(Worker, NeedsNoFinaliser) {
  bool ran = false;
  {
    Worker worker;
    worker.add_job([&ran] { ran = true; }, nullptr);
  }
  EXPECT_TRUE(ran);
}

TEST(Worker, RefusesAnEmptyJob) {
  Worker worker;
  EXPECT_THROW(worker.add_job(nullptr, kNothing), std::bad_function_call);
}

TEST(Worker, WithoutAJobHasNoThreadToWaitFor) {
  Worker worker;
  worker.WaitForCurrent();
}

TEST(Worker, TakesJobsFromAJob) {
  std::vector<int> order;
  std::promise<void> done;
  Worker worker;
  worker.add_job(
      [&] {
        worker.add_job([&] { order.push_back(3); }, [&] { done.set_value(); });
        order.push_back(1);
      },
      [&] { order.push_back(2); });
  done.get_future().wait();
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(Worker, ReleasesWhatAJobHoldsBeforeTheFinaliser) {
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = held;
  std::promise<bool> gone;
  std::promise<void> go;
  Worker worker;
  worker.add_job([&go] { go.get_future().wait(); }, kNothing);
  worker.add_job([held = std::move(held)] { (void)*held; },
                 [&gone, watch] { gone.set_value(watch.expired()); });
  go.set_value();
  EXPECT_TRUE(gone.get_future().get());
}

TEST(Worker, WaitsForTheTaskThatRuns) {
  std::promise<void> started;
  std::promise<void> go;
  std::atomic<bool> finalised{false};
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = held;
  Worker worker;
  worker.add_job(
      [&] {
        started.set_value();
        go.get_future().wait();
      },
      [&finalised, held = std::move(held)] { finalised = true; });
  started.get_future().wait();

  std::thread releaser([&go] { go.set_value(); });
  worker.WaitForCurrent();

  EXPECT_TRUE(finalised);
  EXPECT_TRUE(watch.expired());
  releaser.join();
}

TEST(Worker, TakesJobsFromManyThreadsAndNeverOverlapsThem) {
  constexpr int kThreads = 8;
  constexpr int kJobs = 200;
  // Guarded by nothing: only the worker touches them.
  std::vector<std::vector<int>> seen(kThreads);
  int unfinalised = 0;
  {
    Worker worker;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([&, thread] {
        for (int job = 0; job < kJobs; ++job) {
          worker.add_job(
              [&seen, &unfinalised, thread, job] {
                seen[static_cast<size_t>(thread)].push_back(job);
                ++unfinalised;
              },
              [&unfinalised] { EXPECT_EQ(unfinalised--, 1); });
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
  }
  for (const std::vector<int>& jobs : seen) {
    ASSERT_EQ(jobs.size(), static_cast<size_t>(kJobs));
    EXPECT_TRUE(std::is_sorted(jobs.begin(), jobs.end()));
  }
  EXPECT_EQ(unfinalised, 0);
}

class FailingJobTest : public SetFixture {
 protected:
  // Runs the two and returns the texts that were logged.
  std::vector<std::string> Run(const std::function<void()>& job,
                               const std::function<void()>& finalizer) {
    {
      Worker worker;
      worker.add_job(job, finalizer);
      worker.add_job([this] { lived_on_ = true; }, nullptr);
    }
    std::vector<std::string> texts;
    for (const tvset::LogLine& line : set().log().lines()) {
      EXPECT_EQ(line.tag, "WEBAPI_PLUGINS");
      EXPECT_EQ(line.priority, DLOG_ERROR);
      texts.push_back(line.text);
    }
    return texts;
  }

  bool lived_on_ = false;
};

TEST_F(FailingJobTest, AThrowingJobIsLoggedAndStillFinalised) {
  bool finalised = false;
  EXPECT_THAT(Run([] { throw std::runtime_error("job's own"); }, [&] { finalised = true; }),
              ElementsAre(HasSubstr("job's own")));
  EXPECT_TRUE(finalised);
  EXPECT_TRUE(lived_on_);
}

TEST_F(FailingJobTest, AThrowingFinaliserIsLogged) {
  EXPECT_THAT(Run(kNothing, [] { throw std::runtime_error("finaliser's own"); }),
              ElementsAre(HasSubstr("finaliser's own")));
  EXPECT_TRUE(lived_on_);
}

TEST_F(FailingJobTest, ExceptionsOfAnyTypeAreStopped) {
  EXPECT_THAT(Run([] { throw 1; }, [] { throw "text"; }),
              ElementsAre(HasSubstr("unknown type"), HasSubstr("unknown type")));
  EXPECT_TRUE(lived_on_);
}

TEST(TaskQueue, IsOneForTheProcess) {
  common::TaskQueue* other = nullptr;
  std::thread([&other] { other = &common::TaskQueue::GetInstance(); }).join();
  EXPECT_EQ(other, &common::TaskQueue::GetInstance());
}

}  // namespace
}  // namespace orvane::test
