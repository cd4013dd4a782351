// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/package_archive.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <set>
#include <string_view>
#include <system_error>

#include <boost/algorithm/string/predicate.hpp>

#include "app/problem.h"
#include "base/utf8.h"
#include "posix/unique_fd.h"
#include "posix/write_all.h"

namespace orvane::app {

namespace fs = std::filesystem;

namespace {

struct FileCloser {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

// What is wrong with an entry's name; empty when nothing is.
std::string WhyBadName(const std::string& name) {
  constexpr size_t kLongestName = 1024;
  constexpr size_t kLongestComponent = 255;
  if (name.empty() || name.size() > kLongestName) return "its name is empty or too long";
  if (name.front() == '/') return "its path is absolute";
  if (name.find('\\') != std::string::npos) return "its path has backslashes in place of slashes";
  size_t begin = 0;
  while (begin < name.size()) {
    const size_t end = std::min(name.find('/', begin), name.size());
    const std::string_view component(name.data() + begin, end - begin);
    if (component == "..") return "its path leads upwards (\"..\")";
    if (component.empty() || component == ".") return "its path has an empty component";
    if (component.size() > kLongestComponent) return "its name is too long";
    begin = end + 1;
  }
  return {};
}

// A name for messages: nothing that a terminal would act upon, and not too long.
std::string Shown(const std::string& name) {
  std::string shown = base::Shortened(name, 100);
  std::replace_if(
      shown.begin(), shown.end(),
      [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }, '?');
  return "\"" + shown + "\"";
}

}  // namespace

PackageArchive::PackageArchive(const fs::path& file, const UnpackLimits& limits)
    : file_(file), limits_(limits), bytes_left_(limits.total_bytes) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  if (error) Refuse("cannot be read: " + error.message() + ".");
  if (size > limits.archive_bytes) {
    Refuse("is larger than " + std::to_string(limits.archive_bytes >> 20) + " MiB.");
  }
  Open();
  ReadEntries();
  CheckConfigIsThere();
}

void PackageArchive::Open() {
  int code = 0;
  archive_.reset(zip_open(file_.c_str(), ZIP_RDONLY, &code));
  if (archive_) return;
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  const std::string text = zip_error_strerror(&error);
  zip_error_fini(&error);
  Refuse("is no .wgt file, which is a ZIP archive (" + text + "). Pack the application again.");
}

void PackageArchive::ReadEntries() {
  const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
  if (count < 0 || static_cast<std::uint64_t>(count) > limits_.entries) {
    Refuse("holds more than " + std::to_string(limits_.entries) + " files.");
  }
  std::set<std::string> names;
  for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(count); ++index) {
    entries_.push_back(ReadEntry(index));
    if (!names.insert(entries_.back().name).second) {
      Refuse("holds " + Shown(entries_.back().name) + " twice. Pack the application again.");
    }
  }
}

PackageArchive::ArchiveEntry PackageArchive::ReadEntry(zip_uint64_t index) const {
  const char* raw_name = zip_get_name(archive_.get(), index, ZIP_FL_ENC_GUESS);
  if (raw_name == nullptr) Refuse("is damaged: a file in it has no name. Pack it again.");
  std::string name = raw_name;
  const std::string why = WhyBadName(name);
  if (!why.empty()) {
    Refuse("holds the file " + Shown(name) + ", which is not unpacked because " + why +
           ". Pack the application again, from within its folder.");
  }
  CheckKind(index, name);
  const bool is_folder = name.back() == '/';
  if (is_folder) name.pop_back();
  return {index, std::move(name), is_folder};
}

void PackageArchive::CheckKind(zip_uint64_t index, const std::string& name) const {
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(archive_.get(), index, 0, &system, &attributes) == 0 &&
      system == ZIP_OPSYS_UNIX) {
    const mode_t type = (attributes >> 16) & S_IFMT;
    if (type != 0 && type != S_IFREG && type != S_IFDIR) {
      Refuse("holds " + Shown(name) +
             ", which is a link or a special file. Pack plain files only.");
    }
  }
  zip_stat_t stat;
  if (zip_stat_index(archive_.get(), index, 0, &stat) != 0) Refuse("is damaged. Pack it again.");
  if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE) {
    Refuse("holds " + Shown(name) + " with a password. Pack the application without one.");
  }
}

void PackageArchive::CheckConfigIsThere() const {
  const auto is_config = [](const ArchiveEntry& entry) {
    return entry.name == "config.xml" && !entry.is_folder;
  };
  const auto ends_with_config = [](const ArchiveEntry& entry) {
    return boost::ends_with(entry.name, "/config.xml");
  };
  if (std::any_of(entries_.begin(), entries_.end(), is_config)) return;
  const auto deeper = std::find_if(entries_.begin(), entries_.end(), ends_with_config);
  if (deeper == entries_.end()) Refuse("holds no config.xml. Pack the application with it.");
  Refuse("holds no config.xml at its root, but " + Shown(deeper->name) +
         ". Pack what is in the application's folder, not the folder itself.");
}

void PackageArchive::ExtractTo(const fs::path& folder) {
  for (const ArchiveEntry& entry : entries_) {
    const fs::path target = folder / entry.name;
    std::error_code error;
    fs::create_directories(entry.is_folder ? target : target.parent_path(), error);
    if (error) Refuse("cannot be unpacked: " + Shown(entry.name) + ": " + error.message() + ".");
    if (!entry.is_folder) ExtractFile(entry, target);
  }
}

void PackageArchive::ExtractFile(const ArchiveEntry& entry, const fs::path& target) {
  const std::unique_ptr<zip_file_t, FileCloser> file(
      zip_fopen_index(archive_.get(), entry.index, 0));
  if (!file) {
    Refuse("cannot be unpacked: " + Shown(entry.name) + ": " + zip_strerror(archive_.get()) + ".");
  }
  // Fails rather than follow a link or write into a file that is there already.
  const base::UniqueFd output(
      open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
  if (!output) {
    Refuse("cannot be unpacked: " + target.string() + ": " + std::strerror(errno) + ".");
  }
  std::uint64_t file_bytes_left = limits_.file_bytes;
  char buffer[65536];
  for (;;) {
    const zip_int64_t count = zip_fread(file.get(), buffer, sizeof buffer);
    if (count == 0) return;
    if (count < 0) Refuse("is damaged at " + Shown(entry.name) + ". Pack the application again.");
    const auto bytes = static_cast<std::uint64_t>(count);
    if (bytes > file_bytes_left || bytes > bytes_left_) {
      Refuse("is not unpacked: " + Shown(entry.name) + " goes beyond " +
             std::to_string(limits_.file_bytes >> 20) + " MiB for a file, or the archive beyond " +
             std::to_string(limits_.total_bytes >> 20) + " MiB in all.");
    }
    file_bytes_left -= bytes;
    bytes_left_ -= bytes;
    if (!base::WriteAll(output.get(), {buffer, static_cast<size_t>(count)})) {
      Refuse("cannot be unpacked: " + target.string() + ": " + std::strerror(errno) + ".");
    }
  }
}

void PackageArchive::Refuse(const std::string& text) const { throw AppError(file_, text); }

}  // namespace orvane::app
