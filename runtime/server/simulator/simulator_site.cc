// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/simulator_site.h"

#include <algorithm>
#include <utility>

#include "server/web/secret.h"
#include "simulator/simulator_files.h"

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

SimulatorSite::SimulatorSite(const Origins& origins, std::string secret, Api& api,
                             EventBroadcast& events)
    : origin_(origins.simulator),
      policy_(
          "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
          "font-src 'self'; connect-src 'self' " +
          origin_.socket_url() + "; frame-src " + origins.app.url() +
          "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"),
      secret_(std::move(secret)),
      api_(api),
      events_(events) {}

void SimulatorSite::Handle(std::shared_ptr<HttpConnection> connection) {
  const HttpRequest& request = connection->request();
  const std::string why = WhyForeign(request, origin_);
  if (!why.empty()) return connection->Respond(TextResponse(403, why));
  if (request.path == "/api" && websocket::is_upgrade(request)) return OpenSocket(connection);
  if (request.path == "/api/call" && request.method() == http::verb::post)
    return HandleCall(connection);
  SendFile(connection);
}

void SimulatorSite::SendFile(const std::shared_ptr<HttpConnection>& connection) {
  const HttpRequest& request = connection->request();
  if (!request.IsRead()) return connection->Respond(TextResponse(405, "This can only be read."));
  HttpResponse response;
  const std::string path = request.path == "/" ? "/index.html" : request.path;
  const auto& files = simulator::Files();
  const auto file = std::find_if(files.begin(), files.end(),
                                 [&path](const auto& each) { return each.path == path; });
  if (file == files.end()) {
    response = TextResponse(404, "The simulator has no such file.");
  } else {
    response = BodyResponse(file->type, file->bytes);
  }
  response.set("Content-Security-Policy", policy_);
  response.set("Cross-Origin-Opener-Policy", "same-origin");
  response.set("Cross-Origin-Embedder-Policy", "require-corp");
  response.set("Cross-Origin-Resource-Policy", "same-origin");
  response.set("Origin-Agent-Cluster", "?1");
  response.set("Referrer-Policy", "no-referrer");
  response.set("X-Frame-Options", "DENY");
  connection->Respond(std::move(response));
}

void SimulatorSite::OpenSocket(const std::shared_ptr<HttpConnection>& connection) {
  const bool may = SecretsMatch(connection->request().Query("token"), secret_);
  connection->AcceptSocket([this, may](const std::shared_ptr<Socket>& socket) {
    if (!may) return socket->Close(kRefused, kNoSecret);
    sessions_.insert(std::make_shared<ApiSession>(
        socket, api_, events_,
        [this](const std::shared_ptr<SocketListener>& session) { sessions_.erase(session); }));
  });
}

void SimulatorSite::HandleCall(const std::shared_ptr<HttpConnection>& connection) {
  const HttpRequest& request = connection->request();
  if (!SecretsMatch(request.Header("X-Orvane-Token"), secret_)) {
    return connection->Respond(TextResponse(403, kNoSecret));
  }
  try {
    const Json call = base::ParseJson(request.body());
    api_.Call(call, [connection](const ApiAnswer& answer) {
      connection->Respond(BodyResponse("application/json", answer.Text()));
    });
  } catch (const base::JsonError& error) {
    connection->Respond(TextResponse(400, error.what()));
  }
}

}  // namespace orvane::server
