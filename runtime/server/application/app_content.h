// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "server/application/app_folder.h"
#include "server/application/app_site.h"
#include "server/application/dev_server.h"
#include "server/application/folder_watcher.h"
#include "server/pages/page_contexts.h"
#include "server/records/event_broadcast.h"
#include "server/simulator/run_options.h"
#include "server/web/origins.h"

namespace orvane::server {

// What is served as the application: the files of its folder, which is watched, or the pages of a
// development server. The loop's thread only.
class AppContent {
 public:
  struct Parts {  // all borrowed
    asio::io_context& loop;
    const AppSite& site;
    PageContexts& contexts;
    EventBroadcast& events;
    std::function<void(const std::string& text)> explain;  // to a person
  };

  // Throws RunError for an address of a development server that is none.
  AppContent(const RunOptions& options, const Origins& origins, Parts parts);

  void Handle(const std::shared_ptr<Exchange>& exchange);
  void StopWatching() { watcher_.reset(); }

 private:
  void Relay(const std::string& url, const Origins& origins);
  void Watch(const std::filesystem::path& folder);

  const Parts parts_;
  std::optional<AppFolder> folder_;      // either this
  std::optional<DevServer> dev_server_;  // or this
  std::optional<server::FolderWatcher> watcher_;
};

}  // namespace orvane::server
