// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/folder_watcher.h"

#include <sys/inotify.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <map>
#include <system_error>
#include <utility>

#include <boost/asio/io_context.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/steady_timer.hpp>

namespace orvane::server {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::milliseconds kQuiet(100);
constexpr std::chrono::milliseconds kLongestWait(1000);
constexpr std::chrono::milliseconds kBetweenLooks(200);  // for a folder that is gone
constexpr uint32_t kEvents = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

bool EndsIn(const std::string& name, const std::string& end) {
  return name.size() >= end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0;
}

// Whether it is no part of the application, as far as its name says.
bool IsIgnored(const std::string& name) {
  if (name.empty() || name.front() == '.' || name == "node_modules") return true;
  // "4913" is what an editor makes to see whether it may.
  return name == "4913" || EndsIn(name, "~") || EndsIn(name, ".swp") || EndsIn(name, ".tmp");
}

int OpenInotify() {
  const int descriptor = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "inotify");
  return descriptor;
}

}  // namespace

class FolderWatcher::Watch : public std::enable_shared_from_this<Watch> {
 public:
  Watch(boost::asio::io_context& io, fs::path folder, Changed changed)
      : folder_(std::move(folder)),
        changed_(std::move(changed)),
        inotify_(io, OpenInotify()),
        quiet_(io),
        absence_(io) {
    if (!AddAll()) throw std::system_error(errno, std::generic_category(), folder_.string());
  }

  void Begin() { Wait(); }

  void End() {
    changed_ = nullptr;
    inotify_.close();
    quiet_.cancel();
    absence_.cancel();
  }

  bool complete() const { return complete_; }

 private:
  void Wait() {
    inotify_.async_wait(boost::asio::posix::stream_descriptor::wait_read,
                        [self = shared_from_this()](boost::system::error_code error) {
                          if (error || !self->changed_) return;
                          self->Read();
                          self->Wait();
                        });
  }

  void Read() {
    alignas(inotify_event) std::array<char, 16384> buffer{};
    while (true) {
      const ssize_t size = read(inotify_.native_handle(), buffer.data(), buffer.size());
      if (size <= 0) return;
      for (ssize_t at = 0; at < size;) {
        inotify_event event{};
        std::memcpy(&event, buffer.data() + at, sizeof event);
        const char* const name = buffer.data() + at + sizeof event;
        OnEvent(event, event.len == 0 ? std::string() : std::string(name));
        at += static_cast<ssize_t>(sizeof event + event.len);
      }
    }
  }

  void OnEvent(const inotify_event& event, const std::string& name) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) return Note(".");
    if (event.wd == root_ && (event.mask & (IN_IGNORED | IN_MOVE_SELF)) != 0) return AwaitFolder();
    if ((event.mask & IN_IGNORED) != 0) {
      folders_.erase(event.wd);
      return;
    }
    const auto folder = folders_.find(event.wd);
    if (folder == folders_.end() || IsIgnored(name)) return;
    const fs::path path = folder->second / name;
    if ((event.mask & IN_ISDIR) != 0) {
      // What was written into a new folder before it was watched is not told file by file.
      if ((event.mask & (IN_CREATE | IN_MOVED_TO)) != 0 && AddFolder(path)) AddFoldersOf(path);
    } else if ((event.mask & IN_CREATE) != 0) {
      return;  // it is told when it is written
    }
    Note(path.generic_string());
  }

  // It was removed or renamed, as some builds do: looks for another in its place.
  void AwaitFolder() {
    root_ = -1;
    for (const auto& [watch, folder] : folders_) {
      inotify_rm_watch(inotify_.native_handle(), watch);
    }
    folders_.clear();
    LookForFolder();
  }

  void LookForFolder() {
    absence_.expires_after(kBetweenLooks);
    absence_.async_wait([self = shared_from_this()](boost::system::error_code error) {
      if (error || !self->changed_) return;
      if (!self->AddAll()) return self->LookForFolder();
      self->Note(".");
    });
  }

  // Tells when nothing came for a moment, or when the first one waited long enough.
  void Note(std::string file) {
    const auto now = std::chrono::steady_clock::now();
    if (waiting_.empty()) first_ = now;
    waiting_ = std::move(file);
    quiet_.expires_at(std::min(now + kQuiet, first_ + kLongestWait));
    quiet_.async_wait([self = shared_from_this()](boost::system::error_code error) {
      if (error || !self->changed_ || self->waiting_.empty()) return;
      self->changed_(std::exchange(self->waiting_, {}));
    });
  }

  bool AddAll() {
    root_ = Add({}, kEvents | IN_MOVE_SELF);
    if (root_ >= 0) AddFoldersOf({});
    return root_ >= 0;
  }

  bool AddFolder(const fs::path& relative) { return Add(relative, kEvents) >= 0; }

  // The watch; -1: there is none.
  int Add(const fs::path& relative, uint32_t events) {
    if (folders_.size() >= kMaxFolders) {
      complete_ = false;
      return -1;
    }
    const int watch = inotify_add_watch(inotify_.native_handle(), (folder_ / relative).c_str(),
                                        events | IN_ONLYDIR | IN_DONT_FOLLOW);
    if (watch < 0) {
      complete_ = complete_ && errno != ENOSPC;
      return -1;
    }
    folders_[watch] = relative;
    return watch;
  }

  void AddFoldersOf(const fs::path& relative) {
    std::error_code error;
    fs::recursive_directory_iterator entry(folder_ / relative, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
      std::error_code unknown;
      if (entry->is_symlink(unknown) || !entry->is_directory(unknown)) continue;
      if (IsIgnored(entry->path().filename().string())) {
        entry.disable_recursion_pending();
      } else {
        AddFolder(entry->path().lexically_relative(folder_));
      }
    }
  }

  const fs::path folder_;
  Changed changed_;  // empty once it has ended
  boost::asio::posix::stream_descriptor inotify_;
  boost::asio::steady_timer quiet_;
  boost::asio::steady_timer absence_;
  int root_ = -1;                    // the watch of the folder itself; -1: it is gone
  std::map<int, fs::path> folders_;  // by inotify's number; relative
  bool complete_ = true;
  std::string waiting_;  // the last file of those that are still to be told
  std::chrono::steady_clock::time_point first_;
};

FolderWatcher::FolderWatcher(boost::asio::io_context& io, fs::path folder, Changed changed)
    : watch_(std::make_shared<Watch>(io, std::move(folder), std::move(changed))) {
  watch_->Begin();
}

FolderWatcher::~FolderWatcher() { watch_->End(); }

bool FolderWatcher::complete() const { return watch_->complete(); }

}  // namespace orvane::server
