// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/package_unpacker.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <boost/scope_exit.hpp>

#include "app/package_archive.h"
#include "app/problem.h"

namespace orvane::app {

namespace fs = std::filesystem;

namespace {

// FNV-1a, to give folders short names; the text comes from the user's own file system.
std::string Digest(std::string_view text) {
  std::uint64_t hash = 14695981039346656037ULL;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
  return digits;
}

// Changes whenever the file is replaced or written to.
std::string Stamp(const fs::path& archive) {
  struct stat status {};
  if (stat(archive.c_str(), &status) != 0) {
    throw AppError(archive, std::string("cannot be read: ") + std::strerror(errno) + ".");
  }
  const auto time = [](const timespec& at) {
    return std::to_string(at.tv_sec) + "." + std::to_string(at.tv_nsec);
  };
  return std::to_string(status.st_ino) + " " + std::to_string(status.st_size) + " " +
         time(status.st_mtim) + " " + time(status.st_ctim);
}

constexpr char kScratchPrefix[] = ".unpacking-";

fs::path MakeScratchFolder(const fs::path& root) {
  std::error_code error;
  fs::create_directories(root, error);
  std::string name = (root / (std::string(kScratchPrefix) + "XXXXXX")).string();
  if (error || mkdtemp(name.data()) == nullptr) {
    throw AppError(root, "no folder can be made here to unpack the application into: " +
                             (error ? error.message() : std::string(std::strerror(errno))) +
                             ". Check that this folder may be written to.");
  }
  return name;
}

// Removes the folders whose names begin with `prefix`, but for the newest `kept` and those that
// were written to after `oldest`.
void RemoveOlder(const fs::path& root, const std::string& prefix, size_t kept,
                 fs::file_time_type oldest) {
  std::error_code error;
  std::vector<std::pair<fs::file_time_type, fs::path>> folders;
  for (const fs::directory_entry& entry : fs::directory_iterator(root, error)) {
    if (entry.path().filename().string().rfind(prefix, 0) != 0) continue;
    folders.emplace_back(entry.last_write_time(error), entry.path());
  }
  std::sort(folders.rbegin(), folders.rend());
  for (size_t i = kept; i < folders.size(); ++i) {
    if (folders[i].first < oldest) fs::remove_all(folders[i].second, error);
  }
}

}  // namespace

fs::path Unpack(const fs::path& archive, const fs::path& root, const UnpackLimits& limits) {
  const std::string prefix = Digest(fs::absolute(archive).string()) + "-";
  fs::path folder = fs::absolute(root) / (prefix + Digest(Stamp(archive)));
  if (fs::is_directory(folder)) return folder;
  PackageArchive package(archive, limits);
  std::error_code error;
  const fs::path scratch = MakeScratchFolder(root);
  // Nothing is left there when it was renamed away.
  BOOST_SCOPE_EXIT_ALL(&) { fs::remove_all(scratch, error); };
  package.ExtractTo(scratch);
  fs::rename(scratch, folder, error);
  // Another process that unpacked the same archive at the same time may have been first.
  if (error && !fs::is_directory(folder)) {
    throw AppError(folder, "cannot be made: " + error.message() + ".");
  }
  RemoveOlder(root, prefix, 3, fs::file_time_type::max());
  // What unpackings left behind that were killed on the way; one that is under way is young.
  RemoveOlder(root, kScratchPrefix, 0, fs::file_time_type::clock::now() - std::chrono::hours(1));
  return folder;
}

}  // namespace orvane::app
