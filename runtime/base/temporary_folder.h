// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace orvane::base {

// A new folder of this user alone, which goes with the object, with all that is in it.
class TemporaryFolder {
 public:
  // Throws std::runtime_error.
  explicit TemporaryFolder(const std::string& prefix) {
    std::string name = (std::filesystem::temp_directory_path() / (prefix + "XXXXXX")).string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("No folder can be made in " +
                               std::filesystem::temp_directory_path().string() + ". Set TMPDIR.");
    }
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace orvane::base
