// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/folder_watcher.h"

#include <stdlib.h>

#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>

namespace orvane::server {
namespace {

namespace fs = std::filesystem;

class FolderWatcherTest : public ::testing::Test {
 protected:
  FolderWatcherTest() {
    std::string name = (fs::temp_directory_path() / "orvane-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp " + name);
    folder_ = name;
  }
  ~FolderWatcherTest() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  void Write(const std::string& file) {
    fs::create_directories((folder_ / file).parent_path());
    std::ofstream(folder_ / file) << "text";
  }

  // Runs until `count` changes were told; a bound keeps a failure from hanging.
  void RunUntil(size_t count) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (told_.size() < count && std::chrono::steady_clock::now() < end) {
      io_.run_one_for(std::chrono::milliseconds(100));
    }
    ASSERT_GE(told_.size(), count);
  }

  FolderWatcher::Changed Tell() {
    return [this](const std::string& file) { told_.push_back(file); };
  }

  fs::path folder_;
  boost::asio::io_context io_;
  std::vector<std::string> told_;
};

TEST_F(FolderWatcherTest, TellsAWrittenFile) {
  FolderWatcher watcher(io_, folder_, Tell());

  Write("index.html");
  RunUntil(1);

  EXPECT_EQ(told_, std::vector<std::string>{"index.html"});
}

TEST_F(FolderWatcherTest, GoesOnInAFolderThatIsMadeAnew) {
  fs::create_directories(folder_ / "dist/js");
  FolderWatcher watcher(io_, folder_ / "dist", Tell());

  fs::remove_all(folder_ / "dist");
  Write("dist/js/a.js");
  RunUntil(1);
  while (told_.back() != ".") RunUntil(told_.size() + 1);
  told_.clear();
  Write("dist/js/b.js");
  RunUntil(1);

  EXPECT_EQ(told_.back(), "js/b.js");
}

TEST_F(FolderWatcherTest, GoesOnInAFolderThatTookThePlaceOfAnother) {
  fs::create_directories(folder_ / "dist");
  FolderWatcher watcher(io_, folder_ / "dist", Tell());

  Write("next/index.html");
  fs::rename(folder_ / "dist", folder_ / "old");
  fs::rename(folder_ / "next", folder_ / "dist");
  RunUntil(1);
  Write("old/index.html");
  Write("dist/index.html");
  RunUntil(2);

  EXPECT_EQ(told_, (std::vector<std::string>{".", "index.html"}));
}

TEST_F(FolderWatcherTest, TellsAFileOfAFolderBelow) {
  Write("js/lib/a.js");
  FolderWatcher watcher(io_, folder_, Tell());

  Write("js/lib/a.js");
  RunUntil(1);

  EXPECT_EQ(told_.front(), "js/lib/a.js");
}

TEST_F(FolderWatcherTest, WatchesAFolderThatIsMadeLater) {
  FolderWatcher watcher(io_, folder_, Tell());
  Write("new/first.js");
  RunUntil(1);

  Write("new/second.js");
  RunUntil(2);

  EXPECT_EQ(told_.back(), "new/second.js");
}

TEST_F(FolderWatcherTest, TellsManySavesAtOnceOnce) {
  FolderWatcher watcher(io_, folder_, Tell());

  for (int i = 0; i < 50; ++i) Write("file" + std::to_string(i) + ".js");
  RunUntil(1);

  EXPECT_EQ(told_, std::vector<std::string>{"file49.js"});
}

TEST_F(FolderWatcherTest, TellsAFileThatIsRenamedIntoPlace) {
  Write("index.html");
  FolderWatcher watcher(io_, folder_, Tell());

  Write(".index.html.new");
  fs::rename(folder_ / ".index.html.new", folder_ / "index.html");
  RunUntil(1);

  EXPECT_EQ(told_.front(), "index.html");
}

TEST_F(FolderWatcherTest, PassesOverWhatIsNoPartOfTheApplication) {
  Write("node_modules/a/index.js");
  Write(".git/HEAD");
  FolderWatcher watcher(io_, folder_, Tell());

  for (const char* file :
       {"node_modules/a/index.js", ".git/HEAD", "index.html~", ".index.html.swp"})
    Write(file);
  Write("last.js");
  RunUntil(1);

  EXPECT_EQ(told_, std::vector<std::string>{"last.js"});
}

TEST_F(FolderWatcherTest, TellsNothingOnceItIsGone) {
  {
    FolderWatcher watcher(io_, folder_, Tell());
    Write("index.html");
  }

  io_.run();  // ends: nothing is waited for

  EXPECT_TRUE(told_.empty());
}

TEST_F(FolderWatcherTest, RefusesAFolderThatIsNotThere) {
  EXPECT_THROW(FolderWatcher(io_, folder_ / "none", Tell()), std::system_error);
}

}  // namespace
}  // namespace orvane::server
