// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/call_gate.h"

#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace orvane::extensions {
namespace {

TEST(CallGate, LetsCallsInUntilItIsClosed) {
  CallGate gate;
  { EXPECT_TRUE(CallGate::Pass(gate)); }

  gate.Close();

  EXPECT_FALSE(CallGate::Pass(gate));
  gate.Close();
}

TEST(CallGate, DoesNotWaitForPassesOfItsOwnThread) {
  CallGate gate;
  CallGate other;
  CallGate::Pass outer(gate);
  CallGate::Pass between(other);
  CallGate::Pass inner(gate);

  gate.Close();

  EXPECT_FALSE(CallGate::Pass(gate));
  EXPECT_TRUE(CallGate::Pass(other));
}

TEST(CallGate, WaitsForPassesOfOtherThreads) {
  CallGate gate;
  std::atomic<int> inside{0};
  std::atomic<bool> closed{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      while (!closed.load()) {
        CallGate::Pass pass(gate);
        if (!pass) continue;
        ++inside;
        std::this_thread::yield();
        EXPECT_FALSE(closed.load());
        --inside;
      }
    });
  }
  while (inside.load() == 0) std::this_thread::yield();

  gate.Close();

  EXPECT_EQ(inside.load(), 0);
  closed = true;
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace orvane::extensions
