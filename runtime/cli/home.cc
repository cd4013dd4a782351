// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/home.h"

#include <string>
#include <system_error>

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

// The folder that bin/, lib/ and share/ lie in.
fs::path Prefix() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
}

}  // namespace

fs::path FindExtension() {
  std::error_code error;
  for (const char* const library_folder : {"lib", ORVANE_LIBDIR}) {
    const fs::path folder = Prefix() / library_folder;
    for (const char* const name : {"tizen-extensions-crosswalk", "liborvane.so"}) {
      if (fs::exists(folder / name, error)) return folder / name;
    }
  }
  return {};
}

fs::path FindDeviceKeys() {
  std::error_code error;
  fs::path file = Prefix() / "share/orvane/device_keys.json";
  return fs::exists(file, error) ? file : fs::path();
}

fs::path FindTour() {
  std::error_code error;
  const fs::path folder = Prefix() / "share/orvane/examples/tour";
  return fs::exists(folder / "config.xml", error) ? fs::canonical(folder) : fs::path();
}

}  // namespace orvane::cli
