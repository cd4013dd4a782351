// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>

namespace orvane::app {

// What an archive may cost at most. Sizes are of the unpacked bytes that really come out, not
// those that the archive claims.
struct UnpackLimits {
  std::uintmax_t archive_bytes = 512ULL << 20;
  std::uint64_t entries = 20000;
  std::uint64_t file_bytes = 256ULL << 20;
  std::uint64_t total_bytes = 1024ULL << 20;
};

// Unpacks the .wgt file into a folder of its own below `root` and returns that folder. The folder
// appears complete or not at all, and is never written to again: an archive that is the same file
// as before is not unpacked twice, a changed one gets a new folder, and of the older ones a few are
// kept for processes that still read them. Throws AppError; nothing is ever written elsewhere.
std::filesystem::path Unpack(const std::filesystem::path& archive,
                             const std::filesystem::path& root, const UnpackLimits& limits);

}  // namespace orvane::app
