// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/settings_watch.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <system_error>
#include <utility>

namespace orvane::television {

namespace fs = std::filesystem;

SettingsWatch::SettingsWatch(const tvset::Paths& paths, std::function<void()> changed)
    : changed_(std::move(changed)),
      inotify_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      stop_(eventfd(0, EFD_CLOEXEC)) {
  AddFolder(paths.settings());
  AddFolder(paths.memory_settings());
  thread_ = std::thread([this] { Run(); });
}

SettingsWatch::~SettingsWatch() {
  eventfd_write(stop_, 1);
  thread_.join();
  close(stop_);
  close(inotify_);
}

// Settings are written beside their place and renamed into it.
void SettingsWatch::AddFolder(const fs::path& folder) {
  constexpr uint32_t kEvents = IN_MOVED_TO | IN_CLOSE_WRITE | IN_DELETE | IN_CREATE | IN_ONLYDIR;
  const int number = inotify_add_watch(inotify_, folder.c_str(), kEvents);
  if (number < 0) return;
  folders_[number] = folder;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->is_directory(error)) AddFolder(entry->path());
  }
}

void SettingsWatch::Run() {
  pthread_setname_np(pthread_self(), "settings-watch");
  alignas(inotify_event) std::array<char, size_t{4} << 10> events{};
  pollfd descriptors[] = {{inotify_, POLLIN, 0}, {stop_, POLLIN, 0}};
  while (poll(descriptors, 2, -1) >= 0 || errno == EINTR) {
    if ((descriptors[1].revents & POLLIN) != 0) return;
    const ssize_t size = read(inotify_, events.data(), events.size());
    if (size > 0) Follow({events.data(), static_cast<size_t>(size)});
  }
}

// A folder that is new may have got settings before it was watched.
void SettingsWatch::Follow(std::string_view events) {
  while (!events.empty()) {
    inotify_event event = {};
    std::memcpy(&event, events.data(), sizeof(event));
    const char* const name = events.data() + sizeof(event);
    const auto folder = folders_.find(event.wd);
    if ((event.mask & IN_IGNORED) != 0) {
      folders_.erase(event.wd);
    } else if ((event.mask & IN_ISDIR) != 0 && (event.mask & IN_CREATE) != 0 &&
               folder != folders_.end()) {
      AddFolder(fs::path(folder->second) / name);
    }
    events.remove_prefix(sizeof(event) + event.len);
  }
  changed_();
}

}  // namespace orvane::television
