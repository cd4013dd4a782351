// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace tvset {

// The bytes of a regular file, whose size need not be known before: the kernel's own files say 0.
// Empty when it is none or cannot be read to its end, with nothing said of why. Not bounded: for
// files of the set and of the kernel. Any thread.
inline std::optional<std::string> ReadFileBytes(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return std::nullopt;
  std::string bytes;
  std::array<char, 4096> part{};
  do {
    stream.read(part.data(), part.size());
    bytes.append(part.data(), static_cast<size_t>(stream.gcount()));
  } while (stream);
  if (stream.bad()) return std::nullopt;
  return bytes;
}

}  // namespace tvset
