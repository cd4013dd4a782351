// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "base/net.h"
#include "posix/folder_tree.h"

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

  // Borrows the loop. Throws std::system_error when the folder cannot be watched.
  FolderWatcher(asio::io_context& loop, std::filesystem::path folder, Changed changed);
  ~FolderWatcher();  // `changed` is not called any more
  FolderWatcher(const FolderWatcher&) = delete;
  FolderWatcher& operator=(const FolderWatcher&) = delete;

 private:
  template <class Work>
  auto IfAlive(Work work);
  void Wait();
  void OnEvent(const base::FolderTree::Event& event);
  void LookForFolder();
  void Note(std::string file);

  const Changed changed_;
  base::FolderTree tree_;
  asio::posix::stream_descriptor ready_;  // that of the tree, which closes it
  asio::steady_timer quiet_;
  asio::steady_timer absence_;
  std::string waiting_;  // the last file of those that are still to be told
  std::chrono::steady_clock::time_point first_;
  const std::shared_ptr<char> alive_ = std::make_shared<char>();  // for what the loop still holds
};

}  // namespace orvane::server
