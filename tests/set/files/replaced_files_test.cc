// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <string>
#include <vector>

#include "files_fixture.h"

namespace tvset::testing {
namespace {

class ReplacedFilesTest : public FilesTest {
 protected:
  struct Place {
    SetFile file;
    std::string path;
  };
  static std::vector<Place> Places() {
    return {{SetFile::kMemoryStatistics, MemoryPath()},
            {SetFile::kGpuMemory, kGpuMemoryPath},
            {SetFile::kGemInfo, kGemInfoPath},
            {SetFile::kDebugSwitch, kDebugPath},
            {SetFile::kProcessors, "/proc/cpuinfo"}};
  }

  static bool Exists(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
  }
};

TEST_F(ReplacedFilesTest, TextTakesThePlaceOfEachFile) {
  for (const Place& place : Places()) {
    set().files().Replace(place.file, "one\ntwo");
    EXPECT_EQ(ReadStream(place.path), "one\ntwo") << place.path;
    EXPECT_TRUE(Exists(place.path)) << place.path;
    EXPECT_EQ(set().files().source(place.file), SetFileSource::kReplaced);
  }
}

TEST_F(ReplacedFilesTest, FileInTheFolderTakesThePlaceOfEachFile) {
  for (const Place& place : Places()) {
    PutFile(place.file, "from the folder");
    EXPECT_EQ(ReadStream(place.path), "from the folder") << place.path;
    EXPECT_TRUE(Exists(place.path)) << place.path;
    EXPECT_EQ(set().files().source(place.file), SetFileSource::kFolder);
  }
}

TEST_F(ReplacedFilesTest, RemovedFileIsNotThere) {
  for (const Place& place : Places()) {
    set().files().Remove(place.file);
    EXPECT_FALSE(ReadStream(place.path)) << place.path;
    EXPECT_FALSE(Exists(place.path)) << place.path;
    EXPECT_EQ(set().files().source(place.file), SetFileSource::kRemoved);
  }
}

TEST_F(ReplacedFilesTest, RestoredFileIsTheSetsOwn) {
  const std::optional<std::string> own = ReadStream(kGpuMemoryPath);
  set().files().Replace(SetFile::kGpuMemory, "other");
  set().files().Restore(SetFile::kGpuMemory);
  EXPECT_EQ(ReadStream(kGpuMemoryPath), own);
  EXPECT_EQ(set().files().source(SetFile::kGpuMemory), SetFileSource::kSet);
}

TEST_F(ReplacedFilesTest, TextComesBeforeTheFolder) {
  PutFile(SetFile::kGpuMemory, "from the folder");
  set().files().Replace(SetFile::kGpuMemory, "text");
  EXPECT_EQ(ReadStream(kGpuMemoryPath), "text");
  set().files().Restore(SetFile::kGpuMemory);
  EXPECT_EQ(ReadStream(kGpuMemoryPath), "from the folder");
}

TEST_F(ReplacedFilesTest, RestartForgetsTextsAndKeepsTheFolder) {
  PutFile(SetFile::kGpuMemory, "from the folder");
  set().files().Replace(SetFile::kGpuMemory, "text");
  set().files().Remove(SetFile::kGemInfo);
  StartSet();
  EXPECT_EQ(ReadStream(kGpuMemoryPath), "from the folder");
  EXPECT_TRUE(ReadStream(kGemInfoPath));
}

TEST_F(ReplacedFilesTest, MarkStandsForTheProcessId) {
  set().files().Replace(SetFile::kGpuMemory, "a {pid} b {pid}");
  EXPECT_EQ(ReadStream(kGpuMemoryPath), "a " + Pid() + " b " + Pid());
  PutFile(SetFile::kGemInfo, "{pid}{pid}");
  EXPECT_EQ(ReadStream(kGemInfoPath), Pid() + Pid());
}

TEST_F(ReplacedFilesTest, DebugSwitchIsOffUntilThereIsAFile) {
  EXPECT_FALSE(Exists(kDebugPath));
  EXPECT_EQ(errno, ENOENT);
  PutFile(SetFile::kDebugSwitch, "");
  EXPECT_TRUE(Exists(kDebugPath));
}

TEST_F(ReplacedFilesTest, FolderIsADebugSwitchToo) {
  std::filesystem::create_directories(set().paths().files() / "debug");
  struct stat status = {};
  ASSERT_EQ(stat(kDebugPath, &status), 0);
  EXPECT_TRUE(S_ISDIR(status.st_mode));
  EXPECT_EQ(std::fopen(kDebugPath, "r"), nullptr);
  EXPECT_EQ(errno, EISDIR);
}

TEST_F(ReplacedFilesTest, ProcessorsAreTheMachinesUntilReplaced) {
  EXPECT_NE(ReadStream("/proc/cpuinfo").value().find("processor"), std::string::npos);
  set().files().Replace(SetFile::kProcessors, "processor : 0\n");
  EXPECT_EQ(ReadStream("/proc/cpuinfo"), "processor : 0\n");
}

TEST_F(ReplacedFilesTest, FaultFailsTheOpening) {
  for (const Place& place : Places()) {
    const std::string name = "file:" + std::string(NameOf(place.file));
    set().faults().Fail(name, EMFILE, FaultMode::kOnce);
    errno = 0;
    EXPECT_EQ(std::fopen(place.path.c_str(), "r"), nullptr) << name;
    EXPECT_EQ(errno, EMFILE) << name;
    EXPECT_TRUE(set().faults().list().empty()) << name;
  }
}

TEST_F(ReplacedFilesTest, FaultOfAnUnknownFileNamesTheNearOnes) {
  try {
    set().faults().Fail("file:qm_memstats", EIO, FaultMode::kOnce);
    FAIL() << "no error";
  } catch (const SetError& error) {
    EXPECT_NE(std::string(error.what()).find("file:qm_memstat"), std::string::npos) << error.what();
  }
}

TEST_F(ReplacedFilesTest, PersonReadsWhatAReaderFinds) {
  EXPECT_EQ(set().files().Read(SetFile::kGpuMemory), ReadStream(kGpuMemoryPath));
  EXPECT_FALSE(set().files().Read(SetFile::kDebugSwitch));
  set().files().Replace(SetFile::kDebugSwitch, "x");
  EXPECT_EQ(set().files().Read(SetFile::kDebugSwitch), "x");
}

TEST_F(ReplacedFilesTest, FilesAreFoundByTheirNames) {
  for (const SetFile file : kSetFiles) EXPECT_EQ(FindSetFile(NameOf(file)), file);
  EXPECT_FALSE(FindSetFile("none"));
}

}  // namespace
}  // namespace tvset::testing
