// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace boost::asio {
class io_context;
}

namespace orvane::server {

// Tells of files that are written, made, renamed or removed in a folder and the folders below it.
// Hidden files and folders, node_modules, and the backups and swap files of editors do not count;
// symbolic links are not followed. What is saved in quick succession is told once, after a moment
// of quiet. A folder that is removed or renamed is watched again once there is another in its
// place, which is told as ".". Lives on the thread of the io_context.
class FolderWatcher {
 public:
  // The last of the files that changed, relative to the folder.
  using Changed = std::function<void(const std::string& file)>;

  // Throws std::system_error when the folder cannot be watched.
  FolderWatcher(boost::asio::io_context& io, std::filesystem::path folder, Changed changed);
  ~FolderWatcher();  // `changed` is not called any more
  FolderWatcher(const FolderWatcher&) = delete;
  FolderWatcher& operator=(const FolderWatcher&) = delete;

  bool complete() const;  // false: there are too many folders, or too few watches left

 private:
  class Watch;
  std::shared_ptr<Watch> watch_;  // shared with what the io_context still holds
};

}  // namespace orvane::server
