// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "posix/folder_tree.h"
#include "posix/unique_fd.h"

namespace tvset {

class Paths;

// Hears of every change of the settings of one state folder, by whatever process, and tells it to
// who watches the key, and then to the one who hears of all. Partner of Settings, which begins a
// new one with each start of the set.
//
// It has a thread of its own, from Start to Stop, which makes all calls, one after the other, with
// no lock held. The thread shares the object with the Settings and may outlive its part in them.
// Other members: any thread.
class SettingWatches {
 public:
  // Who watches: a key may be watched once by each.
  using Watcher = const void*;
  using Callback = std::function<void(const std::string& key)>;

  // `changed` is called with each key that changed. Null: the kernel gives no watches, or no
  // thread can be had.
  static std::shared_ptr<SettingWatches> Start(const Paths& paths, Callback changed);
  // Ends every watch, and the thread. A callback that runs goes on; no other begins.
  void Stop();
  // Returns when no callback runs, at once when it is called from one. After Stop, and with no lock
  // held that a callback may want.
  void Wait();

  // False: some change may not be heard, for the kernel gave too few watches.
  bool complete() const { return complete_; }

  // False: the watcher watches the key already. A change from just before may be told as well.
  bool Add(const std::string& key, Watcher watcher, Callback callback);
  // False: there is no such watch. When it returns, the callback neither runs nor will, unless it
  // is called from the callback itself.
  bool Remove(const std::string& key, Watcher watcher);

 private:
  struct Watch {
    // Never given again: a callback that is about to run finds out that its watch is gone.
    uint64_t id;
    std::string key;
    Watcher watcher;
    std::shared_ptr<Callback> callback;
  };
  using Watches = std::vector<Watch>;

  SettingWatches(const Paths& paths, Callback changed);
  // The end when there is none.
  Watches::iterator FindLocked(const std::string& key, Watcher watcher);
  // The thread's work, until stop_event_.
  void Run();
  void OnEvent(const orvane::base::FolderTree::Event& event);
  // The ids of the watches that count; empty text: of every key.
  std::vector<uint64_t> Concerned(const std::string& key);
  // Nothing, if the watch is gone by now.
  void Call(uint64_t id);

  // Fixed after construction.
  const Callback changed_;
  // The thread's own, once it runs.
  orvane::base::FolderTree tree_;
  const orvane::base::UniqueFd stop_event_;
  std::atomic<bool> complete_{true};
  std::atomic<bool> stopped_{false};

  std::mutex mutex_;
  std::condition_variable left_;
  // Guarded by mutex_:
  std::thread::id thread_;
  Watches watches_;
  uint64_t last_id_ = 0;
  // The watch whose callback runs; 0: none.
  uint64_t running_ = 0;
};

}  // namespace tvset
