// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <zip.h>

#include "app/package_unpacker.h"

namespace orvane::app {

// A .wgt file opened for reading. Nothing in it is trusted: every entry's name, kind and size is
// checked before anything is written, and sizes are counted again while bytes come out. Every
// method throws AppError that names the archive and the entry.
class PackageArchive {
 public:
  PackageArchive(const std::filesystem::path& file, const UnpackLimits& limits);

  // Writes every file below `folder`, which must be empty and the caller's own.
  void ExtractTo(const std::filesystem::path& folder);

 private:
  struct ArchiveEntry {
    zip_uint64_t index;
    std::string name;  // relative, without "..", in UTF-8
    bool is_folder;
  };
  struct Closer {
    void operator()(zip_t* archive) const { zip_discard(archive); }
  };

  void Open();
  void ReadEntries();
  ArchiveEntry ReadEntry(zip_uint64_t index) const;
  void CheckKind(zip_uint64_t index, const std::string& name) const;
  void CheckConfigIsThere() const;
  void ExtractFile(const ArchiveEntry& entry, const std::filesystem::path& target);
  [[noreturn]] void Refuse(const std::string& text) const;

  const std::filesystem::path file_;
  const UnpackLimits limits_;
  std::unique_ptr<zip_t, Closer> archive_;
  std::vector<ArchiveEntry> entries_;
  std::uint64_t bytes_left_;
};

}  // namespace orvane::app
