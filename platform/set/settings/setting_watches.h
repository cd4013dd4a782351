// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tvset {

// Watches files that are written whole and renamed into place, or written where they are, by any
// process. Partner of Settings.
//
// Callbacks run on one thread of this object, one after the other, with no lock held; several
// changes may come as one call, and one from just before the watch began may come too. The thread
// begins with the first watch and stays to the end of the process; it owns this object together
// with the Settings. Any thread.
class SettingWatches : public std::enable_shared_from_this<SettingWatches> {
 public:
  // Who watches: a file may be watched once by each.
  using Watcher = const void*;

  // False: the watcher watches the file already, or the file's folder cannot be watched.
  bool Add(const std::filesystem::path& file, Watcher watcher, std::function<void()> callback);
  // False: there is no such watch. When it returns, the callback neither runs nor will, unless it
  // is called from the callback itself.
  bool Remove(const std::filesystem::path& file, Watcher watcher);
  // Ends every watch. A callback that runs is not waited for.
  void Clear();

 private:
  struct Watch {
    uint64_t id;
    std::filesystem::path file;
    Watcher watcher;
    int folder;  // inotify's number for it
    std::shared_ptr<std::function<void()>> callback;
  };
  using Watches = std::vector<Watch>;

  bool OpenLocked();
  Watches::iterator FindLocked(const std::filesystem::path& file, Watcher watcher);
  Watches::iterator EraseLocked(Watches::iterator watch);
  void Run();
  void Deliver(const char* events, size_t size);
  static bool IsConcerned(const Watch& watch, const char* events, size_t size);
  void Call(uint64_t id);

  std::mutex mutex_;
  std::condition_variable left_;
  // Guarded by mutex_:
  int descriptor_ = -1;
  std::thread::id thread_;
  Watches watches_;
  uint64_t last_id_ = 0;
  uint64_t running_ = 0;  // the watch whose callback runs; 0: none
};

}  // namespace tvset
