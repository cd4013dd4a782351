// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/folder_watcher.h"

#include <algorithm>
#include <utility>

#include <boost/algorithm/string/predicate.hpp>

namespace orvane::server {

namespace fs = std::filesystem;
using base::FolderTree;

namespace {

constexpr std::chrono::milliseconds kQuiet(100);
constexpr std::chrono::milliseconds kLongestWait(1000);
constexpr std::chrono::milliseconds kBetweenLooks(200);  // for a folder that is gone
constexpr char kAnything[] = ".";  // what is told when it is not known which file

// Whether it is no part of the application, as far as its name says.
bool IsIgnored(const std::string& name) {
  if (name.empty() || name.front() == '.' || name == "node_modules") return true;
  // "4913" is what an editor makes to see whether it may.
  return name == "4913" || boost::ends_with(name, "~") || boost::ends_with(name, ".swp") ||
         boost::ends_with(name, ".tmp");
}

}  // namespace

FolderWatcher::FolderWatcher(asio::io_context& loop, fs::path folder, Changed changed)
    : changed_(std::move(changed)),
      tree_(std::move(folder),
            [](const fs::path& path) { return IsIgnored(path.filename().string()); }),
      ready_(loop, tree_.fd()),
      quiet_(loop),
      absence_(loop) {
  Wait();
}

FolderWatcher::~FolderWatcher() { ready_.release(); }

// A handler that does the work unless the wait or the watcher has ended.
template <class Work>
auto FolderWatcher::IfAlive(Work work) {
  return [work, alive = std::weak_ptr<char>(alive_)](beast::error_code error) {
    if (!error && !alive.expired()) work();
  };
}

void FolderWatcher::Wait() {
  ready_.async_wait(asio::posix::stream_descriptor::wait_read, IfAlive([this] {
                      tree_.Read([this](const FolderTree::Event& event) { OnEvent(event); });
                      Wait();
                    }));
}

// A folder that was removed or renamed, as some builds do: looks for another in its place.
void FolderWatcher::OnEvent(const FolderTree::Event& event) {
  if (event.change == FolderTree::Change::kGone) return LookForFolder();
  Note(event.path.generic_string());
}

void FolderWatcher::LookForFolder() {
  absence_.expires_after(kBetweenLooks);
  absence_.async_wait(IfAlive([this] {
    if (!tree_.Open()) return LookForFolder();
    Note(kAnything);
  }));
}

// Tells when nothing came for a moment, or when the first one waited long enough.
void FolderWatcher::Note(std::string file) {
  const auto now = std::chrono::steady_clock::now();
  if (waiting_.empty()) first_ = now;
  if (waiting_ != kAnything) waiting_ = std::move(file);
  quiet_.expires_at(std::min(now + kQuiet, first_ + kLongestWait));
  quiet_.async_wait(IfAlive([this] {
    if (!waiting_.empty()) changed_(std::exchange(waiting_, {}));
  }));
}

}  // namespace orvane::server
