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
  // As written: relative to the file's folder, or absolute. Neither empty nor with a NUL in it; the
  // file need not exist.
  std::string library;
  std::vector<std::string> entry_points;
  // In its file, from 1, counting those that cannot be used.
  size_t number = 0;
};

// What a metadata file says, as far as it can be understood: an array of objects with "name", "lib"
// and "entry_points". Members of other names are for others and passed over.
struct Metadata {
  std::vector<MetadataEntry> entries;
  // Named by objects that cannot be used, as written: what the author meant to be loaded late is
  // not loaded at once because of a slip.
  std::vector<std::string> refused_libraries;
  // For people, without the file's name.
  std::vector<std::string> problems;
};

// `json` is hostile: whatever it holds, the outcome is entries or problems, never an exception (but
// for want of memory) or unbounded recursion.
Metadata ParseMetadata(std::string_view json);

// Files of up to 1 MiB. What cannot be read, or is longer, is a problem. Any thread.
Metadata ReadMetadataFile(const std::filesystem::path& file);

}  // namespace orvane::extensions
