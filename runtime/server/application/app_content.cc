// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/app_content.h"

#include <system_error>
#include <utility>

namespace orvane::server {

AppContent::AppContent(const RunOptions& options, const Origins& origins, Parts parts)
    : parts_(std::move(parts)) {
  if (!options.dev_server.empty()) {
    Relay(options.dev_server, origins);
  } else {
    folder_.emplace(options.app.folder);
    if (options.watch) Watch(options.app.folder);
  }
}

void AppContent::Relay(const std::string& url, const Origins& origins) {
  const auto note = [this, app = origins.app.url()](const DevServer::Document& document) {
    if (document.is_top) parts_.contexts.ForgetScriptless();
    if (document.problem.empty()) return;
    parts_.contexts.NoteScriptless(app + document.path, document.is_top, document.problem);
  };
  dev_server_.emplace(
      parts_.loop, url, origins.app, origins.simulator,
      DevServer::Listener{[this](HttpResponse* response) { parts_.site.AddHeaders(response); },
                          note});
}

void AppContent::Watch(const std::filesystem::path& folder) {
  try {
    watcher_.emplace(parts_.loop, folder, [this](const std::string& file) {
      parts_.events.Publish("reload", {{"file", file}});
      parts_.contexts.Reload();
    });
  } catch (const std::system_error& error) {
    parts_.explain(std::string("Saved files do not reload the page: ") + error.what() + ".");
  }
}

void AppContent::Handle(const std::shared_ptr<Exchange>& exchange) {
  if (dev_server_) return dev_server_->Handle(exchange);
  HttpResponse response = folder_->Answer(exchange->request());
  parts_.site.AddHeaders(&response);
  exchange->Respond(std::move(response));
}

}  // namespace orvane::server
