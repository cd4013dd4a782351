// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "settings/setting_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>

#include <vconf.h>

#include "posix/unique_fd.h"
#include "posix/write_all.h"
#include "tvset/paths.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

constexpr std::string_view kTemporary = ".~";  // begins the names of files being written

constexpr std::array<SettingPrefix, 3> kPrefixes{{{VCONF_PREFIX_DB, "kdb/db", true},
                                                  {VCONF_PREFIX_FILE, "kdb/file", true},
                                                  {VCONF_PREFIX_MEMORY, "run/memory", false}}};

bool BeginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

// A key's part after its prefix: names a file below the prefix's folder and nothing outside it.
bool IsPlainPath(std::string_view rest) {
  if (rest.empty() || rest.find('\0') != std::string_view::npos) return false;
  while (true) {
    const size_t slash = rest.find('/');
    const std::string_view name = rest.substr(0, slash);
    if (name.empty() || name == "." || name == ".." || BeginsWith(name, kTemporary)) return false;
    if (slash == std::string_view::npos) return true;
    rest.remove_prefix(slash + 1);
  }
}

// Beside the file it becomes, so that the rename stays within one file system.
fs::path TemporaryFor(const fs::path& file) {
  static std::atomic<unsigned> counter{0};
  return file.parent_path() / (std::string(kTemporary) + std::to_string(getpid()) + "." +
                               std::to_string(counter.fetch_add(1)));
}

bool WriteNewFile(const fs::path& file, std::string_view bytes, bool kept) {
  const orvane::base::UniqueFd out(
      open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0664));
  return out && orvane::base::WriteAll(out.get(), bytes) && (!kept || fdatasync(out.get()) == 0);
}

// One attempt; errno says why it failed.
bool TryToReplace(const fs::path& file, std::string_view bytes, bool kept) {
  std::error_code error;
  fs::create_directories(file.parent_path(), error);
  const fs::path temporary = TemporaryFor(file);
  errno = 0;
  if (WriteNewFile(temporary, bytes, kept) && rename(temporary.c_str(), file.c_str()) == 0) {
    return true;
  }
  const int reason = errno;
  // A file of that name that was there before is somebody else's.
  if (reason != EEXIST) unlink(temporary.c_str());
  errno = reason;
  return false;
}

}  // namespace

const SettingPrefix* SettingPrefixOf(std::string_view key) {
  const auto* const found =
      std::find_if(kPrefixes.begin(), kPrefixes.end(),
                   [key](const SettingPrefix& prefix) { return BeginsWith(key, prefix.text); });
  return found == kPrefixes.end() ? nullptr : found;
}

fs::path SettingFile(const Paths& paths, const std::string& key) {
  const SettingPrefix* const prefix = SettingPrefixOf(key);
  if (prefix == nullptr) return {};
  const std::string rest = key.substr(prefix->text.size());
  return IsPlainPath(rest) ? paths.state_folder() / prefix->folder / rest : fs::path();
}

std::string KeyOfSettingFile(const fs::path& relative) {
  const std::string& path = relative.native();
  for (const SettingPrefix& prefix : kPrefixes) {
    const size_t folder = prefix.folder.size();
    if (!BeginsWith(path, prefix.folder) || path[folder] != '/') continue;
    const std::string rest = path.substr(folder + 1);
    if (IsPlainPath(rest)) return std::string(prefix.text) + rest;
  }
  return {};
}

bool LeadsToSettings(const fs::path& relative) {
  const std::string path = relative.native() + "/";
  return std::any_of(kPrefixes.begin(), kPrefixes.end(), [&](const SettingPrefix& prefix) {
    const std::string folder = std::string(prefix.folder) + "/";
    return BeginsWith(folder, path) ||
           (BeginsWith(path, folder) && !KeyOfSettingFile(relative).empty());
  });
}

std::vector<std::string> SettingKeys(const Paths& paths) {
  std::vector<std::string> keys;
  for (const SettingPrefix& prefix : kPrefixes) {
    std::error_code error;
    fs::recursive_directory_iterator entry(paths.state_folder() / prefix.folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
      std::string key = KeyOfSettingFile(entry->path().lexically_relative(paths.state_folder()));
      if (!key.empty()) keys.push_back(std::move(key));
    }
  }
  return keys;
}

// Tries again where the next attempt may do better: the folder went while the file was written, or
// a process of the same id that crashed left a file of the same name.
bool ReplaceSettingFile(const fs::path& file, std::string_view bytes, bool kept) {
  constexpr int kAttempts = 5;
  for (int i = 0; i < kAttempts; ++i) {
    if (TryToReplace(file, bytes, kept)) return true;
    if (errno != ENOENT && errno != EEXIST) return false;
  }
  return false;
}

}  // namespace tvset
