// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "settings/setting_watches.h"

#include <pthread.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace tvset {
namespace {

// The file comes into place, was written where it is, or goes.
constexpr uint32_t kChanges = IN_MOVED_TO | IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM | IN_ONLYDIR;

}  // namespace

bool SettingWatches::Add(const fs::path& file, Watcher watcher, std::function<void()> callback) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!OpenLocked() || FindLocked(file, watcher) != watches_.end()) return false;
  const int folder = inotify_add_watch(descriptor_, file.parent_path().c_str(), kChanges);
  if (folder < 0) return false;
  watches_.push_back(Watch{++last_id_, file, watcher, folder,
                           std::make_shared<std::function<void()>>(std::move(callback))});
  return true;
}

bool SettingWatches::Remove(const fs::path& file, Watcher watcher) {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto found = FindLocked(file, watcher);
  if (found == watches_.end()) return false;
  const uint64_t id = found->id;
  EraseLocked(found);
  if (std::this_thread::get_id() != thread_) {
    left_.wait(lock, [this, id] { return running_ != id; });
  }
  return true;
}

void SettingWatches::Clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  while (!watches_.empty()) EraseLocked(watches_.end() - 1);
}

bool SettingWatches::OpenLocked() {
  if (descriptor_ >= 0) return true;
  const int descriptor = inotify_init1(IN_CLOEXEC);
  if (descriptor < 0) return false;
  try {
    descriptor_ = descriptor;
    std::thread thread([self = shared_from_this()] { self->Run(); });
    thread_ = thread.get_id();
    thread.detach();
  } catch (const std::system_error&) {
    close(descriptor);
    descriptor_ = -1;
  }
  return descriptor_ >= 0;
}

SettingWatches::Watches::iterator SettingWatches::FindLocked(const fs::path& file,
                                                             Watcher watcher) {
  return std::find_if(watches_.begin(), watches_.end(), [&](const Watch& watch) {
    return watch.watcher == watcher && watch.file == file;
  });
}

SettingWatches::Watches::iterator SettingWatches::EraseLocked(Watches::iterator watch) {
  const int folder = watch->folder;
  const auto next = watches_.erase(watch);
  const bool last = std::none_of(watches_.begin(), watches_.end(),
                                 [folder](const Watch& other) { return other.folder == folder; });
  if (last) inotify_rm_watch(descriptor_, folder);
  return next;
}

// Changes that came together are told once.
void SettingWatches::Run() {
  pthread_setname_np(pthread_self(), "set-settings");
  const int descriptor = [this] {
    std::lock_guard<std::mutex> lock(mutex_);
    return descriptor_;
  }();
  alignas(inotify_event) std::array<char, 16384> buffer{};
  while (true) {
    const ssize_t size = read(descriptor, buffer.data(), buffer.size());
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) return;
    Deliver(buffer.data(), static_cast<size_t>(size));
  }
}

void SettingWatches::Deliver(const char* events, size_t size) {
  std::vector<uint64_t> concerned;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const Watch& watch : watches_) {
      if (IsConcerned(watch, events, size)) concerned.push_back(watch.id);
    }
  }
  for (const uint64_t id : concerned) Call(id);
}

// A queue that ran over may have lost any change.
bool SettingWatches::IsConcerned(const Watch& watch, const char* events, size_t size) {
  for (size_t at = 0; at < size;) {
    const auto& event = *reinterpret_cast<const inotify_event*>(events + at);
    if ((event.mask & IN_Q_OVERFLOW) != 0) return true;
    const std::string_view name = event.len == 0 ? std::string_view() : event.name;
    if (event.wd == watch.folder && name == watch.file.filename().native()) return true;
    at += sizeof(inotify_event) + event.len;
  }
  return false;
}

void SettingWatches::Call(uint64_t id) {
  std::shared_ptr<std::function<void()>> callback;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = std::find_if(watches_.begin(), watches_.end(),
                                    [id](const Watch& watch) { return watch.id == id; });
    if (found == watches_.end()) return;
    callback = found->callback;
    running_ = id;
  }
  (*callback)();
  std::lock_guard<std::mutex> lock(mutex_);
  running_ = 0;
  left_.notify_all();
}

}  // namespace tvset
