// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Whatever a metadata file holds, its reader gives entries that can be used, or problems.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "extensions/metadata.h"
#include "fuzz_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view json(reinterpret_cast<const char*>(data), size);
  const orvane::extensions::Metadata metadata = orvane::extensions::ParseMetadata(json);

  for (const auto& entry : metadata.entries) {
    Require(!entry.library.empty());
    Require(entry.library.find('\0') == std::string::npos);
  }
  Require(metadata.refused_libraries.size() <= metadata.problems.size());
  return 0;
}
