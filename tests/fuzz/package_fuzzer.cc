// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Whatever a .wgt holds, nothing is written outside the folder that it is unpacked into, and a
// refused one leaves nothing behind.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "app/package_unpacker.h"
#include "app/problem.h"
#include "fuzz_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const FuzzFolder folder;
  namespace fs = std::filesystem;
  const fs::path root = folder.path() / "unpacked";
  const fs::path archive =
      folder.Write("app.wgt", std::string_view(reinterpret_cast<const char*>(data), size));
  constexpr size_t kPlaces = 2;  // the archive and the folder of unpackings
  const orvane::app::UnpackLimits limits{1 << 20, 64, 1 << 16, 1 << 18};

  bool unpacked = false;
  try {
    const fs::path target = orvane::app::Unpack(archive, root, limits);

    unpacked = true;
    Require(target.parent_path() == root);
    Require(fs::is_regular_file(target / "config.xml"));
  } catch (const orvane::app::AppError& error) {
    Require(!error.problems().empty());
  }
  if (!unpacked && fs::exists(root)) Require(fs::is_empty(root));
  Require(folder.CountEntries() <= kPlaces);
  fs::remove_all(root);
  return 0;
}
