// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "posix/folder_tree.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace fs = std::filesystem;

namespace orvane::base {
namespace {

constexpr uint32_t kEvents = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

bool IsAtOrBelow(const fs::path& path, const fs::path& folder) {
  return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
         folder.end();
}

}  // namespace

FolderTree::FolderTree(fs::path folder, Ignores ignores, size_t max_folders)
    : folder_(std::move(folder)),
      ignores_(std::move(ignores)),
      max_folders_(max_folders),
      inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (!inotify_) throw std::system_error(errno, std::generic_category(), "inotify");
  if (!Open()) throw std::system_error(errno, std::generic_category(), folder_.string());
}

bool FolderTree::Open() { return Open(nullptr); }

// With a handler: tells the files that there are.
bool FolderTree::Open(const Handler& handler) {
  Forget();
  root_ = Watch({}, kEvents | IN_MOVE_SELF);
  if (root_ < 0) return false;
  AddBelow({}, handler);
  return true;
}

void FolderTree::Read(const Handler& handler) {
  alignas(inotify_event) std::array<char, 16384> buffer{};
  while (true) {
    const ssize_t size = read(fd(), buffer.data(), buffer.size());
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) break;
    std::string_view events(buffer.data(), static_cast<size_t>(size));
    while (!events.empty()) {
      inotify_event event{};
      std::memcpy(&event, events.data(), sizeof(event));
      const char* const name = events.data() + sizeof(event);
      OnEvent(event, event.len == 0 ? std::string_view() : name, handler);
      events.remove_prefix(sizeof(event) + event.len);
    }
  }
  found_.clear();  // no event is left that was in the queue when they were found
}

void FolderTree::OnEvent(const inotify_event& event, std::string_view name,
                         const Handler& handler) {
  if ((event.mask & IN_Q_OVERFLOW) != 0) {
    handler({Change::kLost, "."});
    if (!Open(handler)) handler({Change::kGone, "."});
    return;
  }
  if (event.wd == root_ && (event.mask & (IN_IGNORED | IN_MOVE_SELF)) != 0) {
    Forget();
    return handler({Change::kGone, "."});
  }
  const auto folder = folders_.find(event.wd);
  if (folder == folders_.end()) return;
  if ((event.mask & IN_IGNORED) != 0) {
    folders_.erase(folder);
    return;
  }
  const fs::path path = folder->second / name;
  if (name.empty() || ignores_(path)) return;
  if ((event.mask & IN_ISDIR) != 0) return OnFolder(event, path, handler);
  if ((event.mask & (IN_DELETE | IN_MOVED_FROM)) != 0) return handler({Change::kRemoved, path});
  const bool complete = (event.mask & IN_CREATE) == 0;  // otherwise it is told when it is written
  if (complete && !WasFound(path)) handler({Change::kWritten, path});
}

// Whatever a renamed folder held is known under its old name.
void FolderTree::OnFolder(const inotify_event& event, const fs::path& path,
                          const Handler& handler) {
  if ((event.mask & IN_MOVED_FROM) != 0) Drop(path);
  handler({Change::kFolder, path});
  if ((event.mask & (IN_CREATE | IN_MOVED_TO)) != 0) AddFolder(path, handler);
}

// The kernel's number of the watch; -1: there is none.
int FolderTree::Watch(const fs::path& relative, uint32_t mask) {
  if (folders_.size() >= max_folders_) {
    complete_ = false;
    return -1;
  }
  const int watch =
      inotify_add_watch(fd(), (folder_ / relative).c_str(), mask | IN_ONLYDIR | IN_DONT_FOLLOW);
  if (watch < 0) {
    complete_ = complete_ && errno != ENOSPC;
    return -1;
  }
  folders_[watch] = relative;
  return watch;
}

// A folder that is watched already has told, or will tell, what happens in it by itself.
void FolderTree::AddFolder(const fs::path& relative, const Handler& handler) {
  const size_t known = folders_.size();
  if (Watch(relative, kEvents) >= 0 && folders_.size() > known) AddBelow(relative, handler);
}

void FolderTree::AddBelow(const fs::path& relative, const Handler& handler) {
  std::error_code error;
  for (fs::directory_iterator entry(folder_ / relative, error), end; !error && entry != end;
       entry.increment(error)) {
    const fs::path path = relative / entry->path().filename();
    if (ignores_(path)) continue;
    std::error_code unknown;
    const fs::file_status status = entry->symlink_status(unknown);
    if (fs::is_directory(status)) {
      AddFolder(path, handler);
    } else if (handler) {
      TellFound(path, handler);
    }
  }
}

void FolderTree::Drop(const fs::path& relative) {
  for (auto folder = folders_.begin(); folder != folders_.end();) {
    if (!IsAtOrBelow(folder->second, relative)) {
      ++folder;
      continue;
    }
    inotify_rm_watch(fd(), folder->first);
    folder = folders_.erase(folder);
  }
}

void FolderTree::Forget() {
  root_ = -1;
  Drop({});
}

void FolderTree::TellFound(const fs::path& path, const Handler& handler) {
  Identity identity{};
  if (!Identify(folder_ / path, &identity)) return;
  found_[path] = identity;
  handler({Change::kWritten, path});
}

// Whether the file as it is now was told when it was found. Another one may have taken its place
// since.
bool FolderTree::WasFound(const fs::path& path) {
  const auto found = found_.find(path);
  if (found == found_.end()) return false;
  Identity now{};
  const bool same = Identify(folder_ / path, &now) && now == found->second;
  found_.erase(found);
  return same;
}

bool FolderTree::Identify(const fs::path& file, Identity* identity) {
  struct stat status {};
  if (lstat(file.c_str(), &status) != 0) return false;
  identity->device = status.st_dev;
  identity->inode = status.st_ino;
  identity->size = status.st_size;
  identity->changed_ns = int64_t{status.st_ctim.tv_sec} * 1'000'000'000 + status.st_ctim.tv_nsec;
  return true;
}

}  // namespace orvane::base
