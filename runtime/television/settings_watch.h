// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string_view>
#include <thread>

#include "tvset/paths.h"

namespace orvane::television {

// Says that settings of a state folder have changed, by whatever process: the set's own observers
// hear of this process's changes only. Watches from construction to destruction, on a thread of its
// own, which makes the calls; several changes may come as one call, and a call may come without
// one. Where the kernel gives no more watches it stays silent.
class SettingsWatch {
 public:
  SettingsWatch(const tvset::Paths& paths, std::function<void()> changed);
  ~SettingsWatch();  // no call runs, or comes, after it
  SettingsWatch(const SettingsWatch&) = delete;
  SettingsWatch& operator=(const SettingsWatch&) = delete;

 private:
  void AddFolder(const std::filesystem::path& folder);  // and those in it
  void Run();
  void Follow(std::string_view events);

  const std::function<void()> changed_;
  const int inotify_;
  const int stop_;                                // becomes readable at the end
  std::map<int, std::filesystem::path> folders_;  // by the kernel's number; the thread's own
  std::thread thread_;                            // last: begins with everything else in place
};

}  // namespace orvane::television
