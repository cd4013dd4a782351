// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/simulator_site.h"

#include <utility>

#include "server/web/secret.h"

namespace orvane::server {

namespace {

constexpr uint16_t kRefused = 4403;
constexpr char kNoSecret[] = "Open the link that orvane run printed.";

// One simulator's connection.
class ApiSession final : public SocketListener, public std::enable_shared_from_this<ApiSession> {
 public:
  using Closed = std::function<void(const std::shared_ptr<SocketListener>& session)>;

  ApiSession(std::shared_ptr<Socket> socket, Api& api, EventBroadcast& events, Closed closed)
      : socket_(std::move(socket)), api_(api), events_(events), closed_(std::move(closed)) {
    socket_->set_listener(this);
    events_.Add(socket_);
  }

  void OnSocketMessage(std::string_view data, bool) override {
    try {
      const Json request = base::ParseJson(data);
      const Json id = request.is_object() ? request.value("id", Json()) : Json();
      api_.Call(request, [self = shared_from_this(), id](const ApiAnswer& answer) {
        self->socket_->SendText(answer.Text(id));
      });
    } catch (const base::JsonError& error) {
      socket_->SendText(ApiAnswer{"", error.what()}.Text());
    }
  }

  void OnSocketClosed() override {
    events_.Remove(socket_);
    closed_(shared_from_this());
  }

 private:
  const std::shared_ptr<Socket> socket_;
  Api& api_;
  EventBroadcast& events_;
  const Closed closed_;
};

}  // namespace

SimulatorSite::SimulatorSite(Origin origin, const Origin& app, std::string secret, Files files,
                             Api& api, EventBroadcast& events)
    : origin_(std::move(origin)),
      policy_(
          "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
          "font-src 'self'; connect-src 'self' " +
          origin_.socket_url() + "; frame-src " + app.url() +
          "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"),
      secret_(std::move(secret)),
      files_(std::move(files)),
      api_(api),
      events_(events) {}

void SimulatorSite::Handle(std::shared_ptr<Exchange> exchange) {
  const HttpRequest& request = exchange->request();
  const std::string why = WhyForeign(request, origin_);
  if (!why.empty()) return exchange->Respond(TextResponse(403, why));
  if (request.path == "/api" && request.is_socket_upgrade) return OpenSocket(exchange);
  if (request.path == "/api/call" && request.method == "POST") return HandleCall(exchange);
  SendFile(exchange);
}

void SimulatorSite::SendFile(const std::shared_ptr<Exchange>& exchange) {
  const HttpRequest& request = exchange->request();
  if (!request.IsRead()) return exchange->Respond(TextResponse(405, "This can only be read."));
  HttpResponse response;
  std::string type;
  const std::string path = request.path == "/" ? "/index.html" : request.path;
  if (!files_(path, &response.body, &type)) {
    response = TextResponse(404, "The simulator has no such file.");
  } else {
    response.headers = {{"Content-Type", type},
                        {"Cache-Control", "no-store"},
                        {"X-Content-Type-Options", "nosniff"}};
  }
  response.headers.emplace_back("Content-Security-Policy", policy_);
  response.headers.emplace_back("Cross-Origin-Opener-Policy", "same-origin");
  response.headers.emplace_back("Cross-Origin-Embedder-Policy", "require-corp");
  response.headers.emplace_back("Cross-Origin-Resource-Policy", "same-origin");
  response.headers.emplace_back("Origin-Agent-Cluster", "?1");
  response.headers.emplace_back("Referrer-Policy", "no-referrer");
  response.headers.emplace_back("X-Frame-Options", "DENY");
  exchange->Respond(std::move(response));
}

void SimulatorSite::OpenSocket(const std::shared_ptr<Exchange>& exchange) {
  const bool may = SecretsMatch(exchange->request().Query("token"), secret_);
  exchange->AcceptSocket([this, may](const std::shared_ptr<Socket>& socket) {
    if (!may) return socket->Close(kRefused, kNoSecret);
    sessions_.insert(std::make_shared<ApiSession>(
        socket, api_, events_,
        [this](const std::shared_ptr<SocketListener>& session) { sessions_.erase(session); }));
  });
}

void SimulatorSite::HandleCall(const std::shared_ptr<Exchange>& exchange) {
  const HttpRequest& request = exchange->request();
  if (!SecretsMatch(request.Header("X-Orvane-Token"), secret_)) {
    return exchange->Respond(TextResponse(403, kNoSecret));
  }
  try {
    const Json call = base::ParseJson(request.body);
    api_.Call(call, [exchange](const ApiAnswer& answer) {
      exchange->Respond(JsonResponse(answer.Text()));
    });
  } catch (const base::JsonError& error) {
    exchange->Respond(TextResponse(400, error.what()));
  }
}

}  // namespace orvane::server
