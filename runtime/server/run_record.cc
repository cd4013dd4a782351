// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/run_record.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include "posix/unique_fd.h"

namespace orvane::server {

namespace fs = std::filesystem;

RunRecord::RunRecord(const fs::path& state_folder, const RunPlace& place)
    : file_(state_folder / "run" / "simulator.json"), json_(base::JsonText(base::ToJson(place))) {
  fs::create_directories(file_.parent_path());
  const fs::path draft = file_.string() + "." + std::to_string(getpid());
  {
    const base::UniqueFd out(open(draft.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    const auto size = static_cast<ssize_t>(json_.size());
    if (!out || write(out.get(), json_.data(), json_.size()) != size) {
      throw std::system_error(errno, std::generic_category(), draft.string());
    }
  }
  fs::rename(draft, file_);
}

RunRecord::~RunRecord() {
  std::ifstream stream(file_, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  std::error_code ignored;
  if (text == json_) fs::remove(file_, ignored);
}

}  // namespace orvane::server
