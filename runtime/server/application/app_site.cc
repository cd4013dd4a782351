// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/app_site.h"

#include <cstdlib>
#include <utility>

#include "server/browser_script/client_text.h"
#include "server/simulator/run_info.h"
#include "server/web/media_types.h"

namespace orvane::server {

namespace {

constexpr std::string_view kOwnPaths = "/.orvane/";

HttpResponse ScriptResponse(std::string script) {
  HttpResponse response;
  response.headers = {{"Content-Type", "text/javascript; charset=utf-8"},
                      {"Cache-Control", "no-store"},
                      {"X-Content-Type-Options", "nosniff"},
                      {"Cross-Origin-Resource-Policy", "same-origin"},
                      {"Cross-Origin-Embedder-Policy", "credentialless"}};
  response.body = std::move(script);
  return response;
}

int64_t QueryNumber(const HttpRequest& request, std::string_view name) {
  return std::strtoll(request.Query(name).c_str(), nullptr, 10);
}

}  // namespace

AppSite::AppSite(Origin origin, Origin simulator, Parts parts, const RunOptions& options)
    : origin_(std::move(origin)),
      simulator_(std::move(simulator)),
      parts_(parts),
      start_path_(StartPath(options)),
      isolate_(options.isolate) {}

void AppSite::Handle(std::shared_ptr<Exchange> exchange) {
  const HttpRequest& request = exchange->request();
  const std::string why = WhyForeign(request, origin_);
  if (!why.empty()) return exchange->Respond(TextResponse(403, why));
  if (request.path.compare(0, kOwnPaths.size(), kOwnPaths) == 0) return HandleOwn(exchange);
  if (request.path == "/" && request.IsRead() && start_path_ != "/") {
    HttpResponse response = TextResponse(302, "The application starts at " + start_path_);
    response.headers.emplace_back("Location", start_path_);
    return exchange->Respond(std::move(response));
  }
  content_(std::move(exchange));
}

void AppSite::AddHeaders(HttpResponse* response) const {
  bool is_document = false;
  for (const auto& [name, value] : response->headers) {
    if (EqualsIgnoringCase(name, "Content-Type")) is_document = IsDocumentType(value);
  }
  if (isolate_) {
    response->headers.emplace_back("Cross-Origin-Opener-Policy", "same-origin");
    response->headers.emplace_back("Cross-Origin-Embedder-Policy", "credentialless");
  }
  response->headers.emplace_back("Cross-Origin-Resource-Policy",
                                 is_document ? "cross-origin" : "same-origin");
  response->headers.emplace_back("Origin-Agent-Cluster", "?1");
  response->headers.emplace_back("Content-Security-Policy",
                                 "frame-ancestors 'self' " + simulator_.url());
}

void AppSite::HandleOwn(const std::shared_ptr<Exchange>& exchange) {
  const HttpRequest& request = exchange->request();
  const std::string_view path = request.path;
  const std::string_view name = path.substr(kOwnPaths.size());
  if (request.method == "GET" && name == "page.js") return SendPageScript(exchange);
  if (request.method == "GET" && name == "worker.js") return SendWorkerScript(exchange);
  if (name == "socket" && request.is_socket_upgrade) return OpenSocket(exchange);
  if (request.method == "POST" && name == "sync") return HandleSync(exchange);
  if (request.method == "POST" && name == "bye") return HandleBye(exchange);
  exchange->Respond(TextResponse(404, "The runtime has nothing of this name."));
}

void AppSite::SendPageScript(const std::shared_ptr<Exchange>& exchange) {
  const HttpRequest& request = exchange->request();
  if (!IsFromOwnPage(request, origin_)) {
    return exchange->Respond(TextResponse(403, "This script is for the application's pages."));
  }
  const auto context = parts_.contexts.Open(std::string(request.Header("Referer")));
  if (!context) {
    return exchange->Respond(TextResponse(503, "Too many pages are open; close some."));
  }
  exchange->Respond(ScriptResponse(parts_.script.Make(context->id(), context->secret())));
}

void AppSite::SendWorkerScript(const std::shared_ptr<Exchange>& exchange) {
  if (!IsFromOwnPage(exchange->request(), origin_)) {
    return exchange->Respond(TextResponse(403, "This script is for the application's pages."));
  }
  exchange->Respond(ScriptResponse(kWorkerClient));
}

std::shared_ptr<PageContext> AppSite::FindContext(const HttpRequest& request) const {
  // A browser names the origin with each of these requests.
  if (request.Header("Origin") != origin_.url()) return nullptr;
  return parts_.contexts.Find(QueryNumber(request, "context"), request.Query("token"));
}

void AppSite::OpenSocket(const std::shared_ptr<Exchange>& exchange) {
  const HttpRequest& request = exchange->request();
  if (request.Header("Origin") != origin_.url()) {
    return exchange->Respond(TextResponse(403, "The socket is for the application's pages."));
  }
  const int64_t last = QueryNumber(request, "last");
  const std::weak_ptr<PageContext> weak = FindContext(request);
  exchange->AcceptSocket([weak, last](const std::shared_ptr<Socket>& socket) {
    if (const auto context = weak.lock()) return context->Attach(socket, last);
    socket->SendText(R"({"type":"gone"})");
    socket->Close(1000, "there is no such page");
  });
}

void AppSite::HandleSync(const std::shared_ptr<Exchange>& exchange) {
  const auto context = FindContext(exchange->request());
  if (!context) {
    return exchange->Respond(TextResponse(403, "There is no such page; load it again."));
  }
  context->Touch();
  const HttpRequest& request = exchange->request();
  const bool is_binary = request.Header("Content-Type") == "application/octet-stream";
  parts_.messages.HandleRequest(*context, request.body, is_binary,
                                [exchange](const PageMessage& answer) {
                                  HttpResponse response;
                                  response.headers = {{"Content-Type", "text/plain; charset=utf-8"},
                                                      {"Cache-Control", "no-store"},
                                                      {"X-Content-Type-Options", "nosniff"}};
                                  response.body = WritePageMessage(answer).data;
                                  exchange->Respond(std::move(response));
                                });
}

void AppSite::HandleBye(const std::shared_ptr<Exchange>& exchange) {
  if (const auto context = FindContext(exchange->request())) parts_.contexts.Close(*context);
  exchange->Respond(TextResponse(200, "Good bye."));
}

}  // namespace orvane::server
