// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/paths.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <vector>

#include "tvset/error.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

// The folder of shipped profiles, found from where this library lies; empty when there is none.
fs::path ProfileFolder() {
  static const char here = 0;
  Dl_info info{};
  if (dladdr(&here, &info) == 0 || info.dli_fname == nullptr) return {};
  std::error_code error;
  fs::path folder = fs::canonical(info.dli_fname, error);
  if (error) return {};
  // The library is in lib/ or a folder or two below it, share/ is beside lib/.
  for (int up = 0; up < 4 && folder.has_relative_path(); ++up) {
    folder = folder.parent_path();
    fs::path profiles = folder / "share" / "orvane" / "profiles";
    if (fs::is_directory(profiles, error)) return profiles;
  }
  return {};
}

std::string ShippedNames(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".xml") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text.empty() ? "none" : text;
}

}  // namespace

Paths::Paths(fs::path state_folder) : state_folder_(std::move(state_folder)) {}

fs::path Paths::DefaultStateFolder() {
  if (const std::string given = Environment("ORVANE_STATE"); !given.empty()) return given;
  // The base-directory rules: a path that is not absolute counts as none.
  if (const fs::path base = Environment("XDG_STATE_HOME"); base.is_absolute()) {
    return base / "orvane";
  }
  if (const fs::path home = Environment("HOME"); home.is_absolute()) {
    return home / ".local" / "state" / "orvane";
  }
  throw SetError("no state folder: give one, or set ORVANE_STATE, XDG_STATE_HOME or HOME");
}

fs::path Paths::FindProfile(const std::string& name_or_path) {
  const fs::path folder = ProfileFolder();
  std::error_code error;
  const bool is_name = name_or_path.find('/') == std::string::npos;
  if (is_name && !folder.empty()) {
    fs::path shipped = folder / (name_or_path + ".xml");
    if (fs::is_regular_file(shipped, error)) return shipped;
  }
  if (fs::is_regular_file(name_or_path, error)) return name_or_path;
  throw SetError("there is no device profile \"" + name_or_path +
                 "\": give the path of a model-config.xml or one of the shipped names: " +
                 ShippedNames(folder));
}

}  // namespace tvset
