// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::extensions {

// One object of a metadata file that can be used, if the Catalogue takes its names.
struct MetadataEntry {
  std::string name;
  std::string library;  // as written: relative to the file's folder, or absolute
  std::vector<std::string> entry_points;
  size_t number = 0;  // in its file, from 1
};

// What a metadata file says, as far as it can be understood.
struct Metadata {
  std::vector<MetadataEntry> entries;
  // Named by objects that cannot be used. As written.
  std::vector<std::string> refused_libraries;
  // For people, without the file's name.
  std::vector<std::string> problems;
};

// `json` is hostile: whatever it holds, the outcome is entries or problems, never an exception (but
// for want of memory) or unbounded recursion.
Metadata ParseMetadata(std::string_view json);

// Files of up to 1 MiB. What cannot be read is a problem.
Metadata ReadMetadataFile(const std::filesystem::path& file);

}  // namespace orvane::extensions
