// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Threads: the extension thread's rule, and extensions that call from threads of their own.

#include <atomic>
#include <thread>

#include "host_fixture.h"

namespace orvane::extensions {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

template <typename Body>
void RunOnAnotherThread(Body&& body) {
  std::thread(std::forward<Body>(body)).join();
}

TEST_F(HostTest, RejectsCallsFromAnotherThread) {
  Extension* echo = Load("echo", "test.echo");
  auto instance = CreateInstance(echo);

  RunOnAnotherThread([&] {
    EXPECT_THROW(host().LoadFile("lib.so"), HostError);
    EXPECT_THROW(host().LoadFolder(folder()), HostError);
    EXPECT_THROW(host().Find("test.echo"), HostError);
    EXPECT_THROW(host().catalogue(), HostError);
    EXPECT_THROW(echo->CreateInstance(&page()), HostError);
    EXPECT_THROW(instance->PostMessage("text"), HostError);
    EXPECT_THROW(instance->PostBinaryMessage("bytes"), HostError);
    EXPECT_THROW(instance->SendSyncMessage("text"), HostError);
  });

  EXPECT_THAT(page().messages(), IsEmpty());
  EXPECT_EQ(instance->SendSyncMessage("still good"), "still good");
}

TEST_F(HostTest, TakesTheFirstThreadThatUsesIt) {
  host();

  RunOnAnotherThread([&] { EXPECT_EQ(host().Find("test.none"), nullptr); });

  EXPECT_THROW(host().catalogue(), HostError);
}

TEST_F(HostTest, WarnsWhenItEndsOnAnotherThread) {
  Load("named", "test.named");

  RunOnAnotherThread([&] { EndHost(); });

  EXPECT_THAT(warnings(), ElementsAre(HasSubstr("ends on another thread")));
  EXPECT_THAT(journal(), ElementsAre("loaded", "shutdown", "unloaded"));
}

TEST_F(HostTest, LeavesDestroyedToTheExtensionThread) {
  auto instance = CreateInstance(Load("lifecycle", "test.lifecycle"));

  RunOnAnotherThread([&] { instance.reset(); });

  EXPECT_THAT(journal(), ElementsAre("created 1"));
  EXPECT_THAT(warnings(), ElementsAre(HasSubstr("let go on another thread")));
  host().Find("test.lifecycle");
  EXPECT_THAT(journal(), ElementsAre("created 1", "destroyed 1"));
  EXPECT_THAT(page().messages(), ElementsAre("from created"));
}

// The page fails the test when it is called after its instance is gone.
TEST_F(HostTest, CallsNoClientOnceTheInstanceIsGone) {
  Extension* busy = Load("busy_poster", "test.busyPoster");

  for (int round = 0; round < 20; ++round) {
    std::atomic<bool> gone{false};
    Recorder client;
    client.on_message = [&](std::string_view) { EXPECT_FALSE(gone.load()); };
    auto instance = busy->CreateInstance(&client);
    client.WaitForMessages(3);
    instance.reset();
    gone = true;
  }
  EndHost();

  EXPECT_THAT(warnings(), Contains(AllOf(HasSubstr("PostMessage"), HasSubstr("not alive"))));
}

TEST_F(HostTest, LetsClientDestroyItsInstanceInsidePost) {
  auto instance = CreateInstance(Load("echo", "test.echo"));
  page().on_message = [&](std::string_view) { instance.reset(); };

  instance->PostMessage("go");

  EXPECT_EQ(instance, nullptr);
  EXPECT_THAT(warnings(), IsEmpty());
}

// Calls with a dead handle are told to every host, here to the test's own and to one that ends.
TEST_F(HostTest, GivesNoWarningAfterItsEnd) {
  Recorder client;
  std::atomic<int> warned{0};
  std::atomic<bool> ended{false};
  HostOptions other_options;
  other_options.warn = [&](const std::string&) {
    ++warned;
    EXPECT_FALSE(ended.load());
  };
  auto other = std::make_unique<ExtensionHost>(other_options);
  Load("busy_poster", "test.busyPoster")->CreateInstance(&client).reset();
  while (warned.load() == 0) std::this_thread::yield();

  other.reset();
  ended = true;

  const size_t before = warnings().size();
  while (warnings().size() < before + 10) std::this_thread::yield();
}

}  // namespace
}  // namespace orvane::extensions
