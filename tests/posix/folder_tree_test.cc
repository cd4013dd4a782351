// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "posix/folder_tree.h"

#include <stdlib.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::base {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FolderTreeTest : public ::testing::Test {
 protected:
  FolderTreeTest() {
    std::string name = (fs::temp_directory_path() / "orvane-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp " + name);
    folder_ = name;
  }
  ~FolderTreeTest() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  FolderTree Watch(const fs::path& relative = {}) const {
    return FolderTree(folder_ / relative,
                      [](const fs::path& path) { return path.filename() == "ignored"; });
  }

  void Write(const fs::path& file) const {
    fs::create_directories((folder_ / file).parent_path());
    std::ofstream(folder_ / file) << "text";
  }

  void Rename(const fs::path& from, const fs::path& to) const {
    fs::rename(folder_ / from, folder_ / to);
  }

  // One word for each of them: the change and the path.
  static std::vector<std::string> Read(FolderTree& tree) {
    static constexpr const char* kNames[] = {"written", "removed", "folder", "lost", "gone"};
    std::vector<std::string> events;
    tree.Read([&events](const FolderTree::Event& event) {
      events.push_back(std::string(kNames[static_cast<int>(event.change)]) + " " +
                       event.path.string());
    });
    return events;
  }

  fs::path folder_;
};

TEST_F(FolderTreeTest, TellsEachWriteAndRemovalOnce) {
  FolderTree tree = Watch();
  Write("a");
  Write("b");
  Write("a");
  fs::remove(folder_ / "a");
  EXPECT_THAT(Read(tree), ElementsAre("written a", "written b", "written a", "removed a"));
  EXPECT_THAT(Read(tree), IsEmpty());
}

TEST_F(FolderTreeTest, TellsAFileThatIsRenamedIntoPlaceAndAway) {
  Write("ignored");
  FolderTree tree = Watch();
  Rename("ignored", "a");
  Rename("a", "ignored");
  EXPECT_THAT(Read(tree), ElementsAre("written a", "removed a"));
}

TEST_F(FolderTreeTest, TellsWhatIsInAFolderThatIsNewOnce) {
  FolderTree tree = Watch();
  Write("x/y/a");
  EXPECT_THAT(Read(tree), ElementsAre("folder x", "written x/y/a"));
  Write("x/y/a");
  EXPECT_THAT(Read(tree), ElementsAre("written x/y/a"));
}

TEST_F(FolderTreeTest, PassesOverWhatIsIgnored) {
  FolderTree tree = Watch();
  Write("ignored/a");
  Write("x/ignored");
  EXPECT_THAT(Read(tree), ElementsAre("folder x"));
}

TEST_F(FolderTreeTest, KnowsWhatARenamedFolderHoldsUnderItsNewName) {
  Write("x/y/a");
  FolderTree tree = Watch();
  Rename("x", "z");
  EXPECT_THAT(Read(tree), ElementsAre("folder x", "folder z", "written z/y/a"));
  Write("z/y/a");
  EXPECT_THAT(Read(tree), ElementsAre("written z/y/a"));
}

TEST_F(FolderTreeTest, FollowsNoFolderOutOfTheTree) {
  Write("in/x/a");
  FolderTree tree = Watch("in");
  Rename("in/x", "out");
  Write("out/a");
  EXPECT_THAT(Read(tree), ElementsAre("folder x"));
}

TEST_F(FolderTreeTest, FollowsNoSymbolicLink) {
  fs::create_directory(folder_ / "in");
  fs::create_directory(folder_ / "out");
  FolderTree tree = Watch("in");
  fs::create_directory_symlink(folder_ / "out", folder_ / "in" / "link");
  Read(tree);
  Write("out/a");
  EXPECT_THAT(Read(tree), IsEmpty());
}

TEST_F(FolderTreeTest, GoesOnOnceThereIsAnotherFolderInThePlace) {
  Write("in/x/a");
  FolderTree tree = Watch("in");
  Rename("in", "out");
  EXPECT_THAT(Read(tree), ElementsAre("gone ."));
  EXPECT_FALSE(tree.Open());
  Write("in/x/a");
  EXPECT_TRUE(tree.Open());
  Write("in/x/b");
  EXPECT_THAT(Read(tree), ElementsAre("written x/b"));
}

TEST_F(FolderTreeTest, TellsEveryFileWhenTheKernelLostEvents) {
  Write("x/a");
  FolderTree tree = Watch();
  int queue = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> queue;
  if (queue <= 0 || queue > 100000) GTEST_SKIP() << "a queue of " << queue << " events";
  for (int i = 0; i <= queue / 4; ++i) {  // four events each
    Rename("x/a", "x/b");
    Rename("x/b", "x/a");
  }
  const std::vector<std::string> events = Read(tree);
  ASSERT_GE(events.size(), 2u);
  EXPECT_EQ(events[events.size() - 2], "lost .");
  EXPECT_EQ(events.back(), "written x/a");
  Write("x/a");
  EXPECT_THAT(Read(tree), ElementsAre("written x/a"));
}

TEST_F(FolderTreeTest, WatchesNoMoreFoldersThanItsBound) {
  for (const char* name : {"a", "b", "c"}) fs::create_directory(folder_ / name);
  const auto none = [](const fs::path&) { return false; };
  EXPECT_FALSE(FolderTree(folder_, none, 3).complete());
  EXPECT_TRUE(FolderTree(folder_, none, 4).complete());
}

TEST_F(FolderTreeTest, RefusesAFolderThatIsNotThere) {
  EXPECT_THROW(Watch("none"), std::system_error);
}

}  // namespace
}  // namespace orvane::base
