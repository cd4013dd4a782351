// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "server/application/app_folder.h"
#include "server/application/dev_server.h"
#include "server/application/folder_watcher.h"
#include "server/pages/page_contexts.h"
#include "server/pages/page_messages.h"
#include "server/pages/page_script.h"
#include "server/records/event_broadcast.h"
#include "server/records/journal.h"
#include "server/simulator/run_options.h"
#include "server/web/http_connection.h"
#include "server/web/origins.h"

namespace orvane::server {

// The application's origin: below /.orvane/ what its pages' runtime needs, and else the files of
// its folder, which is watched, or the pages of a development server. The loop's thread only.
class AppSite final : public Site {
 public:
  struct Partners {  // all borrowed
    asio::io_context& loop;
    PageContexts& contexts;
    PageMessages& messages;
    const PageScript& script;
    EventBroadcast& events;
    Journal& journal;
  };

  // Throws std::runtime_error for an address of a development server that is none.
  AppSite(const Origins& origins, const RunOptions& options, Partners partners);

  void Handle(std::shared_ptr<HttpConnection> connection) override;
  void StopWatching() { watcher_.reset(); }

 private:
  using Connection = std::shared_ptr<HttpConnection>;

  void Watch(const std::filesystem::path& folder);
  void AddHeaders(HttpResponse* response) const;
  void NoteDocument(const DevServer::Document& document);
  void HandleOwn(const Connection& connection);
  void SendPageScript(const Connection& connection);
  void OpenSocket(const Connection& connection);
  void HandleSync(const Connection& connection);
  std::shared_ptr<PageContext> FindContext(const HttpRequest& request) const;

  const Origins origins_;
  const Partners partners_;
  const std::string start_path_;
  const bool isolate_;
  std::optional<AppFolder> folder_;      // either this
  std::optional<DevServer> dev_server_;  // or this
  std::optional<FolderWatcher> watcher_;
};

}  // namespace orvane::server
