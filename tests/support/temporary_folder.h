// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdlib.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace orvane::test {

// A folder of its own, removed at the end. It lies in memory where the system has a place for files
// and programs there: a set writes each of its settings as a file of its own, and a disk takes a
// thousand times as long for that.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = Place() / "orvane-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make " + pattern);
    path_ = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  static std::filesystem::path Place() {
    constexpr const char* kMemory = "/dev/shm";
    struct statvfs system = {};
    const bool usable = statvfs(kMemory, &system) == 0 && (system.f_flag & ST_NOEXEC) == 0 &&
                        access(kMemory, W_OK) == 0;
    return usable ? kMemory : std::filesystem::temp_directory_path();
  }

  std::filesystem::path path_;
};

}  // namespace orvane::test
