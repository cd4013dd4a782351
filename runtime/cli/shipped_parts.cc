// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/shipped_parts.h"

#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "base/json.h"
#include "cli/exit_code.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

fs::path OwnFile() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error);
}

// The folder that bin/, lib/ and share/ lie in.
fs::path Prefix() { return OwnFile().parent_path().parent_path(); }

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

std::vector<tvset::RemoteKey> ReadDeviceKeys() {
  const fs::path file = Prefix() / "share/orvane/device_keys.json";
  std::error_code error;
  if (!fs::exists(file, error)) return {};
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  std::vector<tvset::RemoteKey> keys;
  try {
    for (const Json& row : base::ParseJson(text.str()).get<std::vector<Json>>()) {
      keys.push_back(
          {row.at("keyName"), row.at("keyCode"), 0, {row.at("name").get<std::string>()}});
    }
  } catch (const std::exception& what) {
    throw CommandError(file.string() + ": the file of the device's keys is damaged. " +
                       what.what() + " Build or install again.");
  }
  return keys;
}

}  // namespace

television::ShippedParts FindShippedParts() { return {FindExtension(), ReadDeviceKeys()}; }

std::vector<std::string> SetProcessCommand() { return {OwnFile().string(), "set-process"}; }

fs::path FindTour() {
  std::error_code error;
  const fs::path folder = Prefix() / "share/orvane/examples/tour";
  return fs::exists(folder / "config.xml", error) ? fs::canonical(folder) : fs::path();
}

}  // namespace orvane::cli
