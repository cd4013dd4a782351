// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/run_record.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include <glib.h>

namespace orvane::server {

namespace fs = std::filesystem;

RunRecord::RunRecord(const fs::path& state_folder, const RunAddresses& addresses)
    : file_(state_folder / "run" / "simulator.json"),
      json_(base::JsonText(base::ToJson(addresses))) {
  fs::create_directories(file_.parent_path());
  GError* error = nullptr;
  if (g_file_set_contents_full(file_.c_str(), json_.data(), static_cast<gssize>(json_.size()),
                               G_FILE_SET_CONTENTS_CONSISTENT, 0600, &error) == FALSE) {
    const std::string why = error->message;
    g_error_free(error);
    throw std::runtime_error(why);
  }
}

RunRecord::~RunRecord() {
  std::ifstream stream(file_, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  std::error_code ignored;
  if (text == json_) fs::remove(file_, ignored);
}

}  // namespace orvane::server
