// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/web_application.h"

#include <system_error>

#include <boost/algorithm/string/replace.hpp>

#include "app/config_reader.h"
#include "app/package_unpacker.h"

namespace orvane::app {

namespace fs = std::filesystem;

namespace {

// The author knows the archive, and not the folder that it was unpacked to.
void NameTheArchive(std::vector<Problem>* problems, const fs::path& unpacked,
                    const fs::path& archive) {
  for (Problem& problem : *problems) {
    boost::replace_all(problem.file, unpacked.string(), archive.string());
    boost::replace_all(problem.text, unpacked.string(), archive.string());
  }
}

WebApplication LoadArchive(const fs::path& archive, const fs::path& unpack_root) {
  const fs::path unpacked = Unpack(archive, unpack_root, UnpackLimits());
  try {
    WebApplication application = ReadConfig(unpacked);
    NameTheArchive(&application.warnings, unpacked, archive);
    return application;
  } catch (const AppError& error) {
    std::vector<Problem> problems = error.problems();
    NameTheArchive(&problems, unpacked, archive);
    throw AppError(std::move(problems));
  }
}

}  // namespace

WebApplication Load(const fs::path& folder_or_wgt, const fs::path& unpack_root) {
  std::error_code error;
  const fs::file_status status = fs::status(folder_or_wgt, error);
  if (status.type() == fs::file_type::not_found) {
    throw AppError(folder_or_wgt,
                   "there is no such file or folder. Give an application's folder (the one with "
                   "config.xml in it) or its .wgt file.");
  }
  if (error) throw AppError(folder_or_wgt, "cannot be read: " + error.message());
  if (fs::is_directory(status)) return ReadConfig(fs::canonical(folder_or_wgt));
  if (fs::is_regular_file(status)) {
    return LoadArchive(fs::canonical(folder_or_wgt), unpack_root);
  }
  throw AppError(folder_or_wgt,
                 "is neither a folder nor a file. Give an application's folder or its .wgt file.");
}

}  // namespace orvane::app
