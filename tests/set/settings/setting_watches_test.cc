// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <vconf.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

constexpr char kKey[] = "memory/x";
constexpr std::chrono::seconds kPatience(30);

// What a watcher was told: the values that it read when it was called.
class Calls {
 public:
  void Add(const std::string& value) {
    const std::lock_guard<std::mutex> lock(mutex_);
    values_.push_back(value);
    thread_ = std::this_thread::get_id();
    changed_.notify_all();
  }
  // Waits until the newest value is this one.
  bool WaitFor(const std::string& value) {
    std::unique_lock<std::mutex> lock(mutex_);
    return changed_.wait_for(lock, kPatience,
                             [&] { return !values_.empty() && values_.back() == value; });
  }
  size_t count() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return values_.size();
  }
  std::thread::id thread() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return thread_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> values_;
  std::thread::id thread_;
};

std::string Get(const char* key) {
  char* value = vconf_get_str(key);
  const std::string text = value == nullptr ? "none" : value;
  std::free(value);
  return text;
}

void Record(keynode_t* node, void* user_data) {
  EXPECT_NE(node, nullptr);
  static_cast<Calls*>(user_data)->Add(Get(kKey));
}
void RecordToo(keynode_t* node, void* user_data) { Record(node, user_data); }
void RecordOther(keynode_t*, void* user_data) {
  static_cast<Calls*>(user_data)->Add(Get("memory/y"));
}

class SettingWatchesTest : public SetTest {
 protected:
  SettingWatchesTest() {
    vconf_set_str(kKey, "first");
    vconf_set_str("memory/y", "first");
  }
  // A watcher may be running still: what it writes to has to outlive the set.
  ~SettingWatchesTest() override { Set::Stop(); }

  // Told of it after everything that was written before.
  void Settle() {
    vconf_notify_key_changed("memory/y", RecordOther, &settled_);
    const std::string mark = std::to_string(++marks_);
    vconf_set_str("memory/y", mark.c_str());
    EXPECT_TRUE(settled_.WaitFor(mark));
    vconf_ignore_key_changed("memory/y", RecordOther);
  }

  static int WriteElsewhere(const std::string& key, const std::string& value) {
    const std::string command = std::string(SETTING_WRITER) + " '" +
                                set().paths().state_folder().string() + "' '" + key + "' '" +
                                value + "' 1";
    return std::system(command.c_str());
  }

  Calls calls_;
  Calls settled_;
  int marks_ = 0;
};

TEST_F(SettingWatchesTest, WatcherReadsTheNewValueUntilItIsTakenAway) {
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  vconf_set_str(kKey, "second");
  EXPECT_TRUE(calls_.WaitFor("second"));
  ASSERT_EQ(vconf_ignore_key_changed(kKey, Record), 0);
  const size_t count = calls_.count();
  vconf_set_str(kKey, "third");
  Settle();
  EXPECT_EQ(calls_.count(), count);
}

TEST_F(SettingWatchesTest, OtherKeysAreNotTold) {
  Settle();
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  vconf_set_str("memory/xy", "other");
  vconf_set_str("db/x", "other");
  Settle();
  EXPECT_EQ(calls_.count(), 0u);
}

TEST_F(SettingWatchesTest, CallsComeOnAThreadOfTheSettings) {
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  ASSERT_EQ(vconf_notify_key_changed("memory/y", RecordOther, &settled_), 0);
  vconf_set_str(kKey, "second");
  vconf_set_str("memory/y", "second");
  EXPECT_TRUE(calls_.WaitFor("second"));
  EXPECT_TRUE(settled_.WaitFor("second"));
  EXPECT_NE(calls_.thread(), std::this_thread::get_id());
  EXPECT_EQ(calls_.thread(), settled_.thread());
}

TEST_F(SettingWatchesTest, ChangeOfAnotherProcessIsTold) {
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  ASSERT_EQ(WriteElsewhere(kKey, "elsewhere"), 0);
  EXPECT_TRUE(calls_.WaitFor("elsewhere"));
}

TEST_F(SettingWatchesTest, ValueWrittenWhereItIsIsTold) {
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  std::ofstream(set().paths().memory_settings() / "x", std::ios::binary)
      << std::string("\x28\0\0\0in place", 12);
  EXPECT_TRUE(calls_.WaitFor("in place"));
}

TEST_F(SettingWatchesTest, RemovalIsTold) {
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  EXPECT_TRUE(set().settings().Remove(kKey));
  EXPECT_TRUE(calls_.WaitFor("none"));
}

TEST_F(SettingWatchesTest, EachCallbackOfAKeyIsTold) {
  Calls more;
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  ASSERT_EQ(vconf_notify_key_changed(kKey, RecordToo, &more), 0);
  vconf_set_str(kKey, "second");
  EXPECT_TRUE(calls_.WaitFor("second"));
  EXPECT_TRUE(more.WaitFor("second"));
  EXPECT_EQ(vconf_ignore_key_changed(kKey, RecordToo), 0);
}

TEST_F(SettingWatchesTest, LastOfManyChangesIsTold) {
  Settle();
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  for (int i = 0; i < 1000; ++i) vconf_set_str(kKey, std::to_string(i).c_str());
  EXPECT_TRUE(calls_.WaitFor("999"));
  EXPECT_LE(calls_.count(), 1000u);
}

TEST_F(SettingWatchesTest, WatchNeedsAKeyThatExistsAndHasNoSuchWatch) {
  EXPECT_NE(vconf_notify_key_changed("memory/none", Record, &calls_), 0);
  EXPECT_NE(vconf_notify_key_changed("other/x", Record, &calls_), 0);
  EXPECT_NE(vconf_ignore_key_changed(kKey, Record), 0);
  EXPECT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  EXPECT_NE(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  EXPECT_NE(vconf_notify_key_changed(nullptr, Record, &calls_), 0);
  EXPECT_NE(vconf_notify_key_changed(kKey, nullptr, &calls_), 0);
  EXPECT_EQ(vconf_ignore_key_changed(kKey, Record), 0);
  EXPECT_NE(vconf_ignore_key_changed(nullptr, Record), 0);
  EXPECT_NE(vconf_ignore_key_changed(kKey, nullptr), 0);
}

TEST_F(SettingWatchesTest, RestartEndsWatches) {
  Settle();
  ASSERT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
  StartSet();
  vconf_set_str(kKey, "second");
  vconf_set_str("memory/y", "first");
  Settle();
  EXPECT_EQ(calls_.count(), 0u);
  EXPECT_EQ(vconf_notify_key_changed(kKey, Record, &calls_), 0);
}

struct Gate {
  std::mutex mutex;
  std::condition_variable changed;
  bool inside = false;
  bool open = false;
};

void WaitInside(keynode_t*, void* user_data) {
  Gate& gate = *static_cast<Gate*>(user_data);
  std::unique_lock<std::mutex> lock(gate.mutex);
  gate.inside = true;
  gate.changed.notify_all();
  gate.changed.wait(lock, [&gate] { return gate.open; });
  gate.inside = false;
}

TEST_F(SettingWatchesTest, TakingAwayWaitsForTheCallThatRuns) {
  Gate gate;
  ASSERT_EQ(vconf_notify_key_changed(kKey, WaitInside, &gate), 0);
  vconf_set_str(kKey, "second");
  {
    std::unique_lock<std::mutex> lock(gate.mutex);
    ASSERT_TRUE(gate.changed.wait_for(lock, kPatience, [&gate] { return gate.inside; }));
  }
  std::thread opener([&gate] {
    const std::lock_guard<std::mutex> lock(gate.mutex);
    gate.open = true;
    gate.changed.notify_all();
  });
  EXPECT_EQ(vconf_ignore_key_changed(kKey, WaitInside), 0);
  EXPECT_FALSE(gate.inside);
  opener.join();
}

void TakeAway(keynode_t*, void* user_data) {
  EXPECT_EQ(vconf_ignore_key_changed(kKey, TakeAway), 0);
  static_cast<Calls*>(user_data)->Add("taken away");
}

TEST_F(SettingWatchesTest, CallbackMayTakeItselfAway) {
  ASSERT_EQ(vconf_notify_key_changed(kKey, TakeAway, &calls_), 0);
  vconf_set_str(kKey, "second");
  EXPECT_TRUE(calls_.WaitFor("taken away"));
  EXPECT_NE(vconf_ignore_key_changed(kKey, TakeAway), 0);
}

TEST_F(SettingWatchesTest, WatchesComeAndGoWhileValuesChange) {
  std::atomic<bool> stop{false};
  std::thread writer([&stop] {
    for (int i = 0; !stop; ++i) vconf_set_str(kKey, std::to_string(i).c_str());
  });
  for (int i = 0; i < 200; ++i) {
    Calls calls;
    EXPECT_EQ(vconf_notify_key_changed(kKey, Record, &calls), 0);
    EXPECT_EQ(vconf_ignore_key_changed(kKey, Record), 0);
  }
  stop = true;
  writer.join();
}

// Two processes write, a third one reads: every value that is read is one that was written.
TEST_F(SettingWatchesTest, WritersInTwoProcessesNeverMixTheirValues) {
  const std::string mine(3000, 'm');
  const std::string theirs(200, 't');
  vconf_set_str("db/shared", mine.c_str());
  const std::string command = std::string(SETTING_WRITER) + " '" +
                              set().paths().state_folder().string() + "' db/shared " + theirs +
                              " 200";
  FILE* const other = popen(command.c_str(), "r");
  ASSERT_NE(other, nullptr);
  std::atomic<bool> stop{false};
  std::thread reader([&] {
    while (!stop) {
      const std::string value = Get("db/shared");
      EXPECT_TRUE(value == mine || value == theirs) << value.size();
    }
  });
  for (int i = 0; i < 200; ++i) EXPECT_EQ(vconf_set_str("db/shared", mine.c_str()), 0);
  EXPECT_EQ(pclose(other), 0);
  stop = true;
  reader.join();
  EXPECT_EQ(set().settings().list().size(), 3u) << "a temporary file is left";
}

}  // namespace
}  // namespace tvset::testing
