// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/inotify.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "posix/unique_fd.h"

namespace orvane::base {

// Hears what becomes of the files in a folder and in the folders below it, by whatever process:
// the one reader of the kernel's file events. Symbolic links below the folder are not followed.
//
// It has no thread: its owner waits until fd() is readable and then calls Read, which does not
// block. One thread at a time.
class FolderTree {
 public:
  enum class Change {
    kWritten,  // a file was written to its end, or renamed into place
    kRemoved,  // a file was removed, or renamed away
    kFolder,   // a folder came or went; the files below one that came are told as written, next
    kLost,     // the kernel's queue ran over: anything may have changed; all files are told next
    kGone,     // the folder itself was removed or renamed: nothing is told until Open succeeds
  };
  struct Event {
    Change change;
    std::filesystem::path path;  // relative to the folder; "." for it itself
  };
  // Whether a file, or a folder with what is below it, is none of the owner's business.
  using Ignores = std::function<bool(const std::filesystem::path& relative)>;
  using Handler = std::function<void(const Event&)>;

  static constexpr size_t kMaxFolders = 4096;

  // More than `max_folders` are not watched. Throws std::system_error when the kernel gives no
  // watches, or the folder cannot be watched.
  FolderTree(std::filesystem::path folder, Ignores ignores, size_t max_folders = kMaxFolders);

  // Readable when something has come. The object keeps it.
  int fd() const { return inotify_.get(); }

  // False: changes of some folder are not heard, for there are more than are watched, or more than
  // the kernel watches for one user.
  bool complete() const { return complete_; }

  // Watches the folder anew, after kGone. False, with errno: there is none in its place yet.
  bool Open();

  // Hands over what has come. Each change of a file is told once, also in a folder that is so new
  // that it was changed before it was watched. Changes of a file that the kernel puts together, as
  // it may when they follow one another at once, are one. `handler` must not call back, nor throw.
  void Read(const Handler& handler);

 private:
  struct Identity {
    uint64_t device;
    uint64_t inode;
    int64_t size;
    int64_t changed_ns;
    bool operator==(const Identity& other) const {
      return device == other.device && inode == other.inode && size == other.size &&
             changed_ns == other.changed_ns;
    }
  };
  static bool Identify(const std::filesystem::path& file, Identity* identity);

  bool Open(const Handler& handler);
  int Watch(const std::filesystem::path& relative, uint32_t mask);
  void AddFolder(const std::filesystem::path& relative, const Handler& handler);
  void AddBelow(const std::filesystem::path& relative, const Handler& handler);
  void Drop(const std::filesystem::path& relative);
  void Forget();
  void OnEvent(const inotify_event& event, std::string_view name, const Handler& handler);
  void OnFolder(const inotify_event& event, const std::filesystem::path& path,
                const Handler& handler);
  void TellFound(const std::filesystem::path& path, const Handler& handler);
  bool WasFound(const std::filesystem::path& path);

  const std::filesystem::path folder_;
  const Ignores ignores_;
  const size_t max_folders_;
  const UniqueFd inotify_;
  bool complete_ = true;
  int root_ = -1;                                    // the folder's own watch; -1: it is gone
  std::map<int, std::filesystem::path> folders_;     // by the kernel's number; relative
  std::map<std::filesystem::path, Identity> found_;  // told before their events were read
};

}  // namespace orvane::base
