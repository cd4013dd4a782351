// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "app/problem.h"

namespace orvane::app {

// A web application as it is packaged for a set: what its config.xml says, and where its files are.
struct WebApplication {
  std::string id;                // "1234567890.Name"
  std::string package;           // the ten characters that the id begins with
  std::string name;              // for people; the id when config.xml has none
  std::string version;           // empty when config.xml has none
  std::string content;           // the start file, relative to `folder`, or an http(s) address
  std::string required_version;  // the platform version that the application asks for
  std::vector<std::pair<std::string, std::string>> metadata;  // in the order of config.xml
  std::vector<std::string> privileges;                        // without duplicates
  std::filesystem::path folder;                               // absolute; holds config.xml
  std::vector<Problem> warnings;                              // odd, but a set would take it
};

// Reads an application's folder, or a .wgt archive, which is unpacked below `unpack_root` (made
// when missing; an archive that has not changed since is not unpacked again). Throws AppError with
// everything that is wrong; problems of an archive's config.xml are told as those of a file in the
// archive. Files of any content are safe to give.
WebApplication Load(const std::filesystem::path& folder_or_wgt,
                    const std::filesystem::path& unpack_root);

}  // namespace orvane::app
