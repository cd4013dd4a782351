// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/metadata.h"

#include <fstream>
#include <utility>

#include "base/json_fields.h"
#include "extensions/host_error.h"

namespace orvane::extensions {

template <class Map>
void MapFields(Map& map, MetadataEntry& entry) {
  map("name", entry.name);
  map("lib", entry.library);
  map("entry_points", entry.entry_points);
}

namespace {

constexpr size_t kMaxFileBytes = 1 << 20;

bool IsFileName(const std::string& text) {
  return !text.empty() && text.find('\0') == std::string::npos;
}

MetadataEntry ReadEntry(const Json& json) {
  auto entry = base::FromJson<MetadataEntry>(json, "the entry");
  if (!IsFileName(entry.library)) {
    throw HostError(
        "\"lib\" is no file name. Give the library's file, relative to this folder or absolute.");
  }
  return entry;
}

// The library that an entry of any other form names; empty when it names none.
std::string LibraryOf(const Json& entry) {
  if (!entry.is_object() || !entry.contains("lib") || !entry["lib"].is_string()) return "";
  auto library = entry["lib"].get<std::string>();
  return IsFileName(library) ? library : "";
}

Metadata Unusable(std::string problem) { return {{}, {}, {std::move(problem)}}; }

Metadata ReadEntries(const Json& entries) {
  Metadata metadata;
  size_t number = 0;
  for (const Json& json : entries) {
    ++number;
    try {
      metadata.entries.push_back(ReadEntry(json));
      metadata.entries.back().number = number;
    } catch (const std::runtime_error& error) {
      metadata.problems.push_back("entry " + std::to_string(number) +
                                  " is not used: " + error.what());
      std::string library = LibraryOf(json);
      if (!library.empty()) metadata.refused_libraries.push_back(std::move(library));
    }
  }
  return metadata;
}

}  // namespace

Metadata ParseMetadata(std::string_view json) {
  try {
    const Json entries = base::ParseJson(json);
    if (entries.is_array()) return ReadEntries(entries);
  } catch (const base::JsonError& error) {
    return Unusable("it is no JSON that can be used. " + std::string(error.what()));
  }
  return Unusable(
      R"(it holds no array. Write an array of objects with "name", "lib" and "entry_points".)");
}

Metadata ReadMetadataFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return Unusable("it cannot be read. Check its permissions.");
  std::string text(kMaxFileBytes + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<size_t>(stream.gcount()));
  if (text.size() > kMaxFileBytes) return Unusable("it is longer than 1 MiB, and not used.");
  return ParseMetadata(text);
}

}  // namespace orvane::extensions
