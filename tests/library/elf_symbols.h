// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace orvane::test {

struct ElfSymbol {
  std::string name;
  bool defined = false;
  bool weak = false;
};

// The dynamic symbols of a 64-bit shared library that other libraries see. Throws
// std::runtime_error for another file.
std::vector<ElfSymbol> ReadDynamicSymbols(const std::filesystem::path& library);

}  // namespace orvane::test
