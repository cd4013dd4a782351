// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "settings/setting_watches.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "settings/setting_files.h"
#include "tvset/paths.h"

namespace tvset {

using orvane::base::FolderTree;

SettingWatches::SettingWatches(const Paths& paths, Callback changed)
    : changed_(std::move(changed)),
      tree_(paths.state_folder(), [](const auto& path) { return !LeadsToSettings(path); }),
      stop_event_(eventfd(0, EFD_CLOEXEC)) {
  if (!stop_event_) throw std::system_error(errno, std::generic_category(), "eventfd");
  complete_ = tree_.complete();
}

std::shared_ptr<SettingWatches> SettingWatches::Start(const Paths& paths, Callback changed) {
  try {
    std::shared_ptr<SettingWatches> self(new SettingWatches(paths, std::move(changed)));
    std::lock_guard<std::mutex> lock(self->mutex_);
    std::thread thread([self] { self->Run(); });
    self->thread_ = thread.get_id();
    thread.detach();
    return self;
  } catch (const std::system_error&) {
    return nullptr;
  }
}

void SettingWatches::Stop() {
  stopped_ = true;
  eventfd_write(stop_event_.get(), 1);
  std::lock_guard<std::mutex> lock(mutex_);
  watches_.clear();
}

void SettingWatches::Wait() {
  std::unique_lock<std::mutex> lock(mutex_);
  if (std::this_thread::get_id() == thread_) return;
  left_.wait(lock, [this] { return running_ == 0; });
}

bool SettingWatches::Add(const std::string& key, Watcher watcher, Callback callback) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (FindLocked(key, watcher) != watches_.end()) return false;
  watches_.push_back(
      Watch{++last_id_, key, watcher, std::make_shared<Callback>(std::move(callback))});
  return true;
}

bool SettingWatches::Remove(const std::string& key, Watcher watcher) {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto found = FindLocked(key, watcher);
  if (found == watches_.end()) return false;
  const uint64_t id = found->id;
  watches_.erase(found);
  if (std::this_thread::get_id() != thread_) {
    left_.wait(lock, [this, id] { return running_ != id; });
  }
  return true;
}

SettingWatches::Watches::iterator SettingWatches::FindLocked(const std::string& key,
                                                             Watcher watcher) {
  return std::find_if(watches_.begin(), watches_.end(), [&](const Watch& watch) {
    return watch.watcher == watcher && watch.key == key;
  });
}

void SettingWatches::Run() {
  pthread_setname_np(pthread_self(), "set-settings");
  pollfd descriptors[] = {{tree_.fd(), POLLIN, 0}, {stop_event_.get(), POLLIN, 0}};
  while (poll(descriptors, 2, -1) >= 0 || errno == EINTR) {
    if (stopped_) return;
    tree_.Read([this](const FolderTree::Event& event) { OnEvent(event); });
    complete_ = tree_.complete();
  }
}

// A setting that was removed while the kernel lost changes is known to its watchers alone.
void SettingWatches::OnEvent(const FolderTree::Event& event) {
  const bool of_file =
      event.change == FolderTree::Change::kWritten || event.change == FolderTree::Change::kRemoved;
  const std::string key = of_file ? KeyOfSettingFile(event.path) : std::string();
  if (key.empty() && event.change != FolderTree::Change::kLost) return;
  for (const uint64_t id : Concerned(key)) Call(id);
  if (!key.empty() && !stopped_) changed_(key);
}

std::vector<uint64_t> SettingWatches::Concerned(const std::string& key) {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<uint64_t> ids;
  for (const Watch& watch : watches_) {
    if (key.empty() || watch.key == key) ids.push_back(watch.id);
  }
  return ids;
}

void SettingWatches::Call(uint64_t id) {
  std::string key;
  std::shared_ptr<Callback> callback;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = std::find_if(watches_.begin(), watches_.end(),
                                    [id](const Watch& watch) { return watch.id == id; });
    if (found == watches_.end()) return;
    key = found->key;
    callback = found->callback;
    running_ = id;
  }
  (*callback)(key);
  std::lock_guard<std::mutex> lock(mutex_);
  running_ = 0;
  left_.notify_all();
}

}  // namespace tvset
