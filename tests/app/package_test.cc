// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>

#include <algorithm>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zip.h>

#include "app/package_unpacker.h"
#include "app/web_application.h"
#include "scratch_folder.h"

namespace orvane::app {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

const fs::path kData = TEST_DATA;

// Writes a ZIP archive, good or bad.
class ZipWriter {
 public:
  explicit ZipWriter(const fs::path& file)
      : zip_(zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr)) {}
  ~ZipWriter() { EXPECT_EQ(zip_close(zip_), 0) << zip_strerror(zip_); }

  zip_uint64_t Add(const std::string& name, const std::string& text) {
    // The archive frees what it is given, save for nothing at all.
    char* copy = text.empty() ? nullptr : static_cast<char*>(malloc(text.size()));
    std::copy(text.begin(), text.end(), copy);
    zip_source_t* source = zip_source_buffer(zip_, copy, text.size(), 1);
    const zip_int64_t index = zip_file_add(zip_, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    EXPECT_GE(index, 0) << name << ": " << zip_strerror(zip_);
    return static_cast<zip_uint64_t>(index);
  }

  void AddWithMode(const std::string& name, const std::string& text, mode_t mode) {
    zip_file_set_external_attributes(zip_, Add(name, text), 0, ZIP_OPSYS_UNIX,
                                     static_cast<zip_uint32_t>(mode) << 16);
  }

  void AddFolder(const std::string& name) { zip_dir_add(zip_, name.c_str(), ZIP_FL_ENC_UTF_8); }

  void AddPlayer() {
    Add("config.xml", ReadText(kData / "player/config.xml"));
    Add("index.html", ReadText(kData / "player/index.html"));
    Add("js/player.js", ReadText(kData / "player/js/player.js"));
  }

 private:
  zip_t* const zip_;
};

class PackageTest : public ::testing::Test {
 protected:
  WebApplication LoadArchive() { return Load(archive_, root_); }

  std::string RefusalOf(const UnpackLimits& limits = UnpackLimits()) {
    try {
      Unpack(archive_, root_, limits);
    } catch (const AppError& error) {
      return error.what();
    }
    return "it was unpacked";
  }

  size_t FoldersInRoot() const {
    if (!fs::exists(root_)) return 0;
    return static_cast<size_t>(std::distance(fs::directory_iterator(root_), {}));
  }

  ScratchFolder scratch_;
  const fs::path archive_ = scratch_.path() / "player.wgt";
  const fs::path root_ = scratch_.path() / "state/unpacked";
};

TEST_F(PackageTest, LoadsAnArchive) {
  ZipWriter(archive_).AddPlayer();

  const WebApplication app = LoadArchive();

  EXPECT_EQ(app.id, "pLaYeR0123.Main");
  EXPECT_EQ(app.folder.parent_path(), root_);
  EXPECT_EQ(ReadText(app.folder / "js/player.js"), ReadText(kData / "player/js/player.js"));
}

TEST_F(PackageTest, TakesFolderEntriesAndUnicodeNames) {
  {
    ZipWriter zip(archive_);
    zip.AddPlayer();
    zip.AddFolder("img/");
    zip.Add("img/héros.png", "x");
  }
  EXPECT_TRUE(fs::exists(LoadArchive().folder / "img/héros.png"));
}

TEST_F(PackageTest, DoesNotUnpackAnUnchangedArchiveAgain) {
  ZipWriter(archive_).AddPlayer();
  const fs::path first = LoadArchive().folder;
  std::ofstream(first / "mark") << "still here";

  EXPECT_EQ(LoadArchive().folder, first);
  EXPECT_TRUE(fs::exists(first / "mark"));
}

TEST_F(PackageTest, UnpacksAChangedArchiveBesideTheOldOne) {
  ZipWriter(archive_).AddPlayer();
  const fs::path first = LoadArchive().folder;
  {
    ZipWriter zip(archive_);
    zip.AddPlayer();
    zip.Add("new.txt", "new");
  }

  const fs::path second = LoadArchive().folder;

  EXPECT_NE(second, first);
  EXPECT_TRUE(fs::exists(second / "new.txt"));
  EXPECT_TRUE(fs::exists(first / "index.html"));
}

TEST_F(PackageTest, KeepsOnlyTheNewestUnpackings) {
  for (int i = 0; i < 6; ++i) {
    {
      ZipWriter zip(archive_);
      zip.AddPlayer();
      zip.Add("n.txt", std::string(static_cast<size_t>(i), 'x'));
    }
    LoadArchive();
  }
  EXPECT_EQ(FoldersInRoot(), 3U);
}

TEST_F(PackageTest, RemovesWhatAKilledUnpackingLeft) {
  const fs::path abandoned = root_ / ".unpacking-killed";
  const fs::path under_way = root_ / ".unpacking-younger";
  fs::create_directories(abandoned / "js");
  fs::create_directories(under_way);
  fs::last_write_time(abandoned, fs::file_time_type::clock::now() - std::chrono::hours(2));
  ZipWriter(archive_).AddPlayer();

  LoadArchive();

  EXPECT_FALSE(fs::exists(abandoned));
  EXPECT_TRUE(fs::exists(under_way));
}

TEST_F(PackageTest, UnpacksOnceForManyAtTheSameTime) {
  ZipWriter(archive_).AddPlayer();
  std::vector<fs::path> folders(8);
  std::vector<std::thread> threads;
  for (fs::path& folder : folders) {
    threads.emplace_back([&] { folder = Unpack(archive_, root_, UnpackLimits()); });
  }
  for (std::thread& thread : threads) thread.join();

  EXPECT_EQ(std::count(folders.begin(), folders.end(), folders[0]), 8);
  EXPECT_EQ(FoldersInRoot(), 1U);
}

TEST_F(PackageTest, RefusesPathsThatLeadOutside) {
  for (const char* name :
       {"../evil", "a/../../evil", "/etc/evil", "a//b", "./a", "a\\..\\b", "..", "a/.."}) {
    {
      ZipWriter zip(archive_);
      zip.AddPlayer();
      zip.Add(name, "evil");
    }
    EXPECT_THAT(RefusalOf(), HasSubstr("which is not unpacked because")) << name;
    EXPECT_FALSE(fs::exists(scratch_.path() / "state/evil"));
    EXPECT_EQ(FoldersInRoot(), 0U);
  }
}

TEST_F(PackageTest, RefusesASymbolicLink) {
  {
    ZipWriter zip(archive_);
    zip.AddPlayer();
    zip.AddWithMode("link", "/etc/passwd", S_IFLNK | 0777);
  }
  EXPECT_THAT(RefusalOf(), HasSubstr("\"link\", which is a link or a special file"));
}

TEST_F(PackageTest, RefusesAFileWhereAFolderIsNeeded) {
  {
    ZipWriter zip(archive_);
    zip.AddPlayer();
    zip.Add("a", "file");
    zip.Add("a/b", "file in it");
  }
  EXPECT_THAT(RefusalOf(), HasSubstr("cannot be unpacked: \"a/b\""));
  EXPECT_EQ(FoldersInRoot(), 0U);
}

TEST_F(PackageTest, RefusesAFolderInPlaceOfItsContent) {
  ZipWriter(archive_).Add("player/config.xml", "");
  EXPECT_THAT(RefusalOf(), HasSubstr("not the folder itself"));
}

TEST_F(PackageTest, RefusesAnArchiveWithoutConfig) {
  ZipWriter(archive_).Add("index.html", "");
  EXPECT_THAT(RefusalOf(), HasSubstr("holds no config.xml. Pack"));
}

TEST_F(PackageTest, RefusesWhatIsNoArchive) {
  scratch_.Write("player.wgt", "this is text");
  EXPECT_THAT(RefusalOf(), HasSubstr("is no .wgt file"));
  scratch_.Write("player.wgt", "");
  EXPECT_THAT(RefusalOf(), HasSubstr("is no .wgt file"));
}

TEST_F(PackageTest, RefusesATruncatedArchive) {
  ZipWriter(archive_).AddPlayer();
  fs::resize_file(archive_, fs::file_size(archive_) / 2);
  EXPECT_THAT(RefusalOf(), HasSubstr("is no .wgt file"));
}

TEST_F(PackageTest, RefusesDamagedContentAndLeavesNothing) {
  ZipWriter(archive_).AddPlayer();
  std::string bytes = ReadText(archive_);
  bytes[60] = static_cast<char>(bytes[60] ^ 0x55);  // within the first file's data
  scratch_.Write("player.wgt", bytes);

  EXPECT_THAT(RefusalOf(), HasSubstr("is damaged"));
  EXPECT_EQ(FoldersInRoot(), 0U);
}

TEST_F(PackageTest, RefusesAFileBeyondTheLimit) {
  {
    ZipWriter zip(archive_);
    zip.AddPlayer();
    zip.Add("zeros", std::string(4 << 20, '\0'));  // packs to a few KiB
  }
  UnpackLimits limits;
  limits.file_bytes = 1 << 20;
  EXPECT_THAT(RefusalOf(limits), HasSubstr("\"zeros\" goes beyond 1 MiB for a file"));
  EXPECT_EQ(FoldersInRoot(), 0U);
}

TEST_F(PackageTest, RefusesManyFilesBeyondTheLimitInAll) {
  {
    ZipWriter zip(archive_);
    zip.AddPlayer();
    for (int i = 0; i < 8; ++i) zip.Add("z" + std::to_string(i), std::string(1 << 20, '\0'));
  }
  UnpackLimits limits;
  limits.total_bytes = 4 << 20;
  EXPECT_THAT(RefusalOf(limits), HasSubstr("or the archive beyond 4 MiB in all"));
}

TEST_F(PackageTest, RefusesTooManyFiles) {
  ZipWriter(archive_).AddPlayer();
  UnpackLimits limits;
  limits.entries = 2;
  EXPECT_THAT(RefusalOf(limits), HasSubstr("more than 2 files"));
}

TEST_F(PackageTest, RefusesAnArchiveBeyondTheLimit) {
  ZipWriter(archive_).AddPlayer();
  UnpackLimits limits;
  limits.archive_bytes = 10;
  EXPECT_THAT(RefusalOf(limits), HasSubstr("is larger than"));
}

TEST_F(PackageTest, RefusesARootThatCannotBeMade) {
  ZipWriter(archive_).AddPlayer();
  scratch_.Write("state", "a file where the folder should be");
  EXPECT_THAT(RefusalOf(), HasSubstr("no folder can be made here"));
}

TEST_F(PackageTest, ReportsConfigErrorsOfAnArchive) {
  ZipWriter(archive_).Add("config.xml", "<widget/>");
  try {
    LoadArchive();
    FAIL();
  } catch (const AppError& error) {
    EXPECT_THAT(error.what(), HasSubstr("config.xml:1: <widget>"));
  }
}

TEST_F(PackageTest, NamesTheArchiveAndNotWhereItIsUnpackedTo) {
  ZipWriter(archive_).Add("config.xml", R"(<widget xmlns="http://www.w3.org/ns/widgets"
    xmlns:tizen="http://tizen.org/ns/widgets">
    <tizen:application id="pLaYeR0123.Main" package="pLaYeR0123" required_version="3.0"/>
    <content src="missing.html"/>
</widget>)");
  try {
    LoadArchive();
    FAIL();
  } catch (const AppError& error) {
    const std::string archive = fs::canonical(archive_).string();
    EXPECT_EQ(error.what(), archive + "/config.xml:4: <content>: the start file \"missing.html\" " +
                                "does not exist in " + archive + ". Add it, or correct src.");
  }
}

}  // namespace
}  // namespace orvane::app
