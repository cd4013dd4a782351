// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/app_site.h"

#include <cstdlib>
#include <system_error>
#include <utility>

#include <boost/algorithm/string/predicate.hpp>

#include "server/browser_script/client_text.h"
#include "server/simulator/run_info.h"
#include "server/web/media_types.h"

namespace orvane::server {

namespace {

constexpr std::string_view kOwnPaths = "/.orvane/";

HttpResponse ScriptResponse(std::string_view script) {
  HttpResponse response = BodyResponse("text/javascript; charset=utf-8", script);
  response.set("Cross-Origin-Resource-Policy", "same-origin");
  response.set("Cross-Origin-Embedder-Policy", "credentialless");
  return response;
}

int64_t QueryNumber(const HttpRequest& request, const char* name) {
  return std::strtoll(request.Query(name).c_str(), nullptr, 10);
}

}  // namespace

AppSite::AppSite(const Origins& origins, const RunOptions& options, Partners partners)
    : origins_(origins),
      partners_(partners),
      start_path_(StartPath(options)),
      isolate_(options.isolate) {
  if (options.dev_server.empty()) {
    folder_.emplace(options.app.folder);
    if (options.watch) Watch(options.app.folder);
    return;
  }
  dev_server_.emplace(partners_.loop, options.dev_server, origins,
                      DevServer::Hooks{[this](HttpResponse* response) { AddHeaders(response); },
                                       [this](const auto& document) { NoteDocument(document); }});
}

void AppSite::Watch(const std::filesystem::path& folder) {
  try {
    watcher_.emplace(partners_.loop, folder, [this](const std::string& file) {
      partners_.events.Publish("reload", {{"file", file}});
      partners_.contexts.Reload();
    });
  } catch (const std::system_error& error) {
    partners_.journal.AddExplanation(
        {{"text", std::string("Saved files do not reload the page: ") + error.what() + "."}});
  }
}

void AppSite::NoteDocument(const DevServer::Document& document) {
  if (document.is_top) partners_.contexts.ForgetScriptless();
  if (document.problem.empty()) return;
  partners_.contexts.NoteScriptless(origins_.app.url() + document.path, document.is_top,
                                    document.problem);
}

void AppSite::Handle(Connection connection) {
  const HttpRequest& request = connection->request();
  const std::string why = WhyForeign(request, origins_.app);
  if (!why.empty()) return connection->Respond(TextResponse(403, why));
  if (boost::starts_with(request.path, kOwnPaths)) return HandleOwn(connection);
  if (request.path == "/" && request.IsRead() && start_path_ != "/") {
    HttpResponse response = TextResponse(302, "The application starts at " + start_path_);
    response.set(http::field::location, start_path_);
    return connection->Respond(std::move(response));
  }
  if (dev_server_) return dev_server_->Handle(connection);
  HttpResponse response = folder_->Answer(request);
  AddHeaders(&response);
  connection->Respond(std::move(response));
}

// What every answer of the origin says: whether its pages are isolated, and who may frame them.
void AppSite::AddHeaders(HttpResponse* response) const {
  const bool is_document = IsDocumentType(View((*response)[http::field::content_type]));
  if (isolate_) {
    response->set("Cross-Origin-Opener-Policy", "same-origin");
    response->set("Cross-Origin-Embedder-Policy", "credentialless");
  }
  response->set("Cross-Origin-Resource-Policy", is_document ? "cross-origin" : "same-origin");
  response->set("Origin-Agent-Cluster", "?1");
  // Beside those of a development server: each policy counts.
  response->insert("Content-Security-Policy", "frame-ancestors 'self' " + origins_.simulator.url());
}

void AppSite::HandleOwn(const Connection& connection) {
  const HttpRequest& request = connection->request();
  const std::string name = request.path.substr(kOwnPaths.size());
  const bool is_post = request.method() == http::verb::post;
  if (request.method() == http::verb::get && (name == "page.js" || name == "worker.js")) {
    if (!IsFromOwnPage(request, origins_.app)) {
      return connection->Respond(TextResponse(403, "This script is for the application's pages."));
    }
    if (name == "page.js") return SendPageScript(connection);
    return connection->Respond(ScriptResponse(kWorkerClient));
  }
  if (name == "socket" && websocket::is_upgrade(request)) return OpenSocket(connection);
  if (is_post && name == "sync") return HandleSync(connection);
  if (is_post && name == "bye") {
    if (const auto context = FindContext(request)) partners_.contexts.Close(*context);
    return connection->Respond(TextResponse(200, "Good bye."));
  }
  connection->Respond(TextResponse(404, "The runtime has nothing of this name."));
}

void AppSite::SendPageScript(const Connection& connection) {
  const auto context =
      partners_.contexts.Open(std::string(connection->request().Header("Referer")));
  if (!context) {
    return connection->Respond(TextResponse(503, "Too many pages are open; close some."));
  }
  connection->Respond(ScriptResponse(partners_.script.Make(context->id(), context->secret())));
}

std::shared_ptr<PageContext> AppSite::FindContext(const HttpRequest& request) const {
  // A browser names the origin with each of these requests.
  if (request.Header("Origin") != origins_.app.url()) return nullptr;
  return partners_.contexts.Find(QueryNumber(request, "context"), request.Query("token"));
}

void AppSite::OpenSocket(const Connection& connection) {
  const HttpRequest& request = connection->request();
  if (request.Header("Origin") != origins_.app.url()) {
    return connection->Respond(TextResponse(403, "The socket is for the application's pages."));
  }
  const int64_t last = QueryNumber(request, "last");
  const std::weak_ptr<PageContext> weak = FindContext(request);
  connection->AcceptSocket([weak, last](const std::shared_ptr<Socket>& socket) {
    if (const auto context = weak.lock()) return context->Attach(socket, last);
    socket->SendText(R"({"type":"gone"})");
    socket->Close(1000, "there is no such page");
  });
}

void AppSite::HandleSync(const Connection& connection) {
  const HttpRequest& request = connection->request();
  const auto context = FindContext(request);
  if (!context) {
    return connection->Respond(TextResponse(403, "There is no such page; load it again."));
  }
  context->Touch();
  const bool is_binary = request.Header("Content-Type") == "application/octet-stream";
  partners_.messages.HandleRequest(
      *context, request.body(), is_binary, [connection](const PageMessage& answer) {
        connection->Respond(
            BodyResponse("text/plain; charset=utf-8", WritePageMessage(answer).data));
      });
}

}  // namespace orvane::server
