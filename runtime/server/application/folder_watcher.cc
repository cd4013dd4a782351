// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/folder_watcher.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

#include <boost/asio/io_context.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/steady_timer.hpp>

#include "posix/folder_tree.h"

namespace orvane::server {

namespace fs = std::filesystem;
using base::FolderTree;

namespace {

constexpr std::chrono::milliseconds kQuiet(100);
constexpr std::chrono::milliseconds kLongestWait(1000);
constexpr std::chrono::milliseconds kBetweenLooks(200);  // for a folder that is gone
constexpr char kAnything[] = ".";  // what is told when it is not known which file

bool EndsIn(const std::string& name, const std::string& end) {
  return name.size() >= end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0;
}

// Whether it is no part of the application, as far as its name says.
bool IsIgnored(const std::string& name) {
  if (name.empty() || name.front() == '.' || name == "node_modules") return true;
  // "4913" is what an editor makes to see whether it may.
  return name == "4913" || EndsIn(name, "~") || EndsIn(name, ".swp") || EndsIn(name, ".tmp");
}

// Asio closes what it waits for: a descriptor of its own.
int Duplicate(int descriptor) {
  const int own = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  if (own < 0) throw std::system_error(errno, std::generic_category(), "inotify");
  return own;
}

}  // namespace

class FolderWatcher::Watch : public std::enable_shared_from_this<Watch> {
 public:
  Watch(boost::asio::io_context& io, fs::path folder, Changed changed)
      : changed_(std::move(changed)),
        tree_(std::move(folder),
              [](const fs::path& path) { return IsIgnored(path.filename().string()); }),
        ready_(io, Duplicate(tree_.fd())),
        quiet_(io),
        absence_(io) {}

  void Wait() {
    ready_.async_wait(
        boost::asio::posix::stream_descriptor::wait_read,
        [self = shared_from_this()](boost::system::error_code error) {
          if (error || !self->changed_) return;
          self->tree_.Read([&self](const FolderTree::Event& event) { self->OnEvent(event); });
          self->Wait();
        });
  }

  void End() {
    changed_ = nullptr;
    ready_.close();
    quiet_.cancel();
    absence_.cancel();
  }

  bool complete() const { return tree_.complete(); }

 private:
  // A folder that was removed or renamed, as some builds do: looks for another in its place.
  void OnEvent(const FolderTree::Event& event) {
    if (event.change == FolderTree::Change::kGone) return LookForFolder();
    Note(event.path.generic_string());
  }

  void LookForFolder() {
    absence_.expires_after(kBetweenLooks);
    absence_.async_wait([self = shared_from_this()](boost::system::error_code error) {
      if (error || !self->changed_) return;
      if (!self->tree_.Open()) return self->LookForFolder();
      self->Note(kAnything);
    });
  }

  // Tells when nothing came for a moment, or when the first one waited long enough.
  void Note(std::string file) {
    const auto now = std::chrono::steady_clock::now();
    if (waiting_.empty()) first_ = now;
    if (waiting_ != kAnything) waiting_ = std::move(file);
    quiet_.expires_at(std::min(now + kQuiet, first_ + kLongestWait));
    quiet_.async_wait([self = shared_from_this()](boost::system::error_code error) {
      if (error || !self->changed_ || self->waiting_.empty()) return;
      self->changed_(std::exchange(self->waiting_, {}));
    });
  }

  Changed changed_;  // empty once it has ended
  FolderTree tree_;
  boost::asio::posix::stream_descriptor ready_;
  boost::asio::steady_timer quiet_;
  boost::asio::steady_timer absence_;
  std::string waiting_;  // the last file of those that are still to be told
  std::chrono::steady_clock::time_point first_;
};

FolderWatcher::FolderWatcher(boost::asio::io_context& io, fs::path folder, Changed changed)
    : watch_(std::make_shared<Watch>(io, std::move(folder), std::move(changed))) {
  watch_->Wait();
}

FolderWatcher::~FolderWatcher() { watch_->End(); }

bool FolderWatcher::complete() const { return watch_->complete(); }

}  // namespace orvane::server
