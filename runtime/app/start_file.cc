// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/start_file.h"

#include <algorithm>
#include <system_error>

namespace orvane::app {

namespace fs = std::filesystem;

std::string WhyNoStartFile(const fs::path& folder, const std::string& source) {
  if (source.rfind("http://", 0) == 0 || source.rfind("https://", 0) == 0) return {};
  const std::string name = source.substr(0, source.find_first_of("?#"));
  if (name.empty()) return "src names no file. Give the start page's, such as src=\"index.html\".";
  const fs::path path(name);
  if (path.is_absolute() || std::find(path.begin(), path.end(), "..") != path.end()) {
    return "src=\"" + source +
           "\" leads out of the application. Give a path relative to the folder of config.xml.";
  }
  std::error_code error;
  if (fs::is_regular_file(folder / path, error)) return {};
  return "the start file \"" + name + "\" does not exist in " + folder.string() +
         ". Add it, or correct src.";
}

}  // namespace orvane::app
