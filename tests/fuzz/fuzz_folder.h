// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdlib.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

inline void Require(bool condition) {
  if (!condition) std::abort();
}

// A folder for the files of one fuzzer process, removed at its end.
class FuzzFolder {
 public:
  FuzzFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "orvane-fuzz-XXXXXX").string();
    Require(mkdtemp(name.data()) != nullptr);
    path_ = name;
  }
  ~FuzzFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  FuzzFolder(const FuzzFolder&) = delete;
  FuzzFolder& operator=(const FuzzFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  std::filesystem::path Write(const std::string& name, std::string_view bytes) const {
    std::filesystem::path file = path_ / name;
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    return file;
  }

  size_t CountEntries() const {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::filesystem::path path_;
};
