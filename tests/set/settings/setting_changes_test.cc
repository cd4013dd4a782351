// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "set_fixture.h"

namespace tvset::testing {
namespace {

using ::testing::ElementsAre;

constexpr char kMark[] = "memory/mark";

// The keys that it was told, and on which thread last.
class Keys : public Observer {
 public:
  Keys() { Set::Instance().events().Add(this); }
  ~Keys() override { Set::Instance().events().Remove(this); }

  void OnSettingChanged(const std::string& key) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    keys_.push_back(key);
    thread_ = std::this_thread::get_id();
    changed_.notify_all();
  }

  // All up to a change that is made now, without it.
  std::vector<std::string> Take() {
    Set::Current().settings().SetString(kMark, "now");
    std::unique_lock<std::mutex> lock(mutex_);
    EXPECT_TRUE(changed_.wait_for(lock, std::chrono::seconds(30),
                                  [this] { return !keys_.empty() && keys_.back() == kMark; }));
    std::vector<std::string> keys = std::move(keys_);
    keys.pop_back();
    keys_.clear();
    return keys;
  }
  std::thread::id thread() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return thread_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> keys_;
  std::thread::id thread_;
};

class SettingChangesTest : public SetTest {
 protected:
  static int WriteElsewhere(const std::string& key, const std::string& value, int times) {
    const std::string command = std::string(SETTING_WRITER) + " '" +
                                set().paths().state_folder().string() + "' '" + key + "' '" +
                                value + "' " + std::to_string(times);
    return std::system(command.c_str());
  }
};

TEST_F(SettingChangesTest, WriteOfThisProcessIsToldOnce) {
  Keys keys;
  set().settings().SetString("db/x", "one");
  set().settings().SetString("file/y", "one");
  EXPECT_THAT(keys.Take(), ElementsAre("db/x", "file/y"));
}

TEST_F(SettingChangesTest, WriteOfAnotherProcessIsToldOnce) {
  Keys keys;
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(WriteElsewhere("db/x", "one", 1), 0);
    EXPECT_THAT(keys.Take(), ElementsAre("db/x"));
  }
}

TEST_F(SettingChangesTest, WriteOfAnEqualValueCounts) {
  Keys keys;
  set().settings().SetString("memory/x", "same");
  set().settings().SetString("memory/x", "same");
  EXPECT_THAT(keys.Take(), ElementsAre("memory/x", "memory/x"));
}

TEST_F(SettingChangesTest, RemovalIsToldOnce) {
  set().settings().SetString("memory/x", "one");
  Keys keys;
  keys.Take();
  EXPECT_TRUE(set().settings().Remove("memory/x"));
  EXPECT_FALSE(set().settings().Remove("memory/x"));
  EXPECT_THAT(keys.Take(), ElementsAre("memory/x"));
}

TEST_F(SettingChangesTest, KeyInAFolderThatIsNewIsToldOnce) {
  Keys keys;
  for (int i = 0; i < 50; ++i) {
    const std::string key = "db/menu/" + std::to_string(i) + "/x";
    set().settings().SetString(key, "one");
    ASSERT_THAT(keys.Take(), ElementsAre(key));
  }
  ASSERT_EQ(WriteElsewhere("db/a/b/c", "one", 1), 0);
  EXPECT_THAT(keys.Take(), ElementsAre("db/a/b/c"));
}

TEST_F(SettingChangesTest, WriteThatFailsIsNotTold) {
  Keys keys;
  EXPECT_FALSE(set().settings().SetString("other/x", "one"));
  EXPECT_FALSE(set().settings().SetString("db/../x", "one"));
  EXPECT_FALSE(set().settings().Set("db/x", 41, "no number"));
  EXPECT_TRUE(keys.Take().empty());
}

TEST_F(SettingChangesTest, FilesOfOtherThingsAreNotTold) {
  Keys keys;
  std::ofstream(set().paths().settings() / "stray") << "text";
  std::ofstream(set().paths().state_folder() / "stray") << "text";
  Install("a.x");
  EXPECT_TRUE(keys.Take().empty());
}

TEST_F(SettingChangesTest, CallsComeOnOneThreadOfTheSettings) {
  Keys keys;
  keys.Take();
  const std::thread::id thread = keys.thread();
  EXPECT_NE(thread, std::this_thread::get_id());
  ASSERT_EQ(WriteElsewhere("db/x", "one", 1), 0);
  keys.Take();
  EXPECT_EQ(keys.thread(), thread);
}

TEST_F(SettingChangesTest, RestartedSetTellsOfItsOwnFolder) {
  Keys keys;
  keys.Take();
  StartSet();
  set().settings().SetString("db/x", "one");
  EXPECT_THAT(keys.Take(), ElementsAre("db/x"));
  Set::Start(Options{folder() / "other", "uhd"});
  std::ofstream(folder() / "state/kdb/db/x") << "old folder";
  set().settings().SetString("db/y", "one");
  EXPECT_THAT(keys.Take(), ElementsAre("db/y"));
}

TEST_F(SettingChangesTest, WithoutASetTheWriterTells) {
  EventHub events;
  struct Observing : Observer {
    void OnSettingChanged(const std::string& key) override {
      told = key;
      thread = std::this_thread::get_id();
    }
    std::string told;
    std::thread::id thread;
  } observer;
  events.Add(&observer);
  const Paths paths(folder() / "unused");
  Settings settings(events, paths);
  EXPECT_TRUE(settings.SetString("db/x", "one"));
  EXPECT_EQ(observer.told, "db/x");
  EXPECT_EQ(observer.thread, std::this_thread::get_id());
}

}  // namespace
}  // namespace tvset::testing
