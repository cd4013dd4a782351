// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/web_application.h"

#include <system_error>

#include "app/config_reader.h"
#include "app/package_unpacker.h"

namespace orvane::app {

namespace fs = std::filesystem;

WebApplication Load(const fs::path& folder_or_wgt, const fs::path& unpack_root) {
  std::error_code error;
  const fs::file_status status = fs::status(folder_or_wgt, error);
  if (status.type() == fs::file_type::not_found) {
    throw AppError({folder_or_wgt.string(), 0, "",
                    "there is no such file or folder. Give an application's folder (the one with "
                    "config.xml in it) or its .wgt file."});
  }
  if (error) throw AppError({folder_or_wgt.string(), 0, "", "cannot be read: " + error.message()});
  if (fs::is_directory(status)) return ReadConfig(fs::canonical(folder_or_wgt));
  if (fs::is_regular_file(status)) {
    return ReadConfig(Unpack(fs::canonical(folder_or_wgt), unpack_root, UnpackLimits()));
  }
  throw AppError(
      {folder_or_wgt.string(), 0, "",
       "is neither a folder nor a file. Give an application's folder or its .wgt file."});
}

}  // namespace orvane::app
