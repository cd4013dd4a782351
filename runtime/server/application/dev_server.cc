// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/dev_server.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "server/application/app_folder.h"
#include "server/application/content_policy.h"
#include "server/application/html_injection.h"
#include "server/application/tunnel.h"
#include "server/web/media_types.h"

namespace orvane::server {

namespace {

constexpr std::chrono::seconds kConnectTime{5};
constexpr std::chrono::seconds kAnswerTime{120};  // a first bundling takes long
constexpr uint64_t kMostDocumentBytes = uint64_t{64} << 20U;
constexpr uint32_t kMostHeadBytes = 256U << 10U;

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::any_of(names.begin(), names.end(),
                     [name](std::string_view other) { return EqualsIgnoringCase(name, other); });
}

bool IsFrame(const HttpRequest& request) {
  return IsOneOf(request.Header("Sec-Fetch-Dest"), {"iframe", "frame", "embed", "object"});
}

// `text` with `from` at its beginning replaced.
std::string WithPrefix(std::string_view text, const std::string& from, const std::string& to) {
  if (text.substr(0, from.size()) != from) return std::string(text);
  return to + std::string(text.substr(from.size()));
}

}  // namespace

DevServer::DevServer(asio::io_context& loop, const std::string& url, Origin app, Origin simulator,
                     Listener listener)
    : loop_(loop) {
  Target target;
  target.address = ParseDevServerAddress(url);
  target.origin.host = target.address.authority;
  target.app = std::move(app);
  target.simulator = std::move(simulator);
  target.listener = std::move(listener);
  target_ = std::make_shared<const Target>(std::move(target));
}

// One request on its way.
class DevServer::Run : public std::enable_shared_from_this<Run> {
 public:
  Run(asio::io_context& loop, std::shared_ptr<const Target> target,
      std::shared_ptr<Exchange> exchange)
      : loop_(loop),
        target_(std::move(target)),
        exchange_(std::move(exchange)),
        resolver_(loop),
        server_(loop),
        request_(RequestText()) {}

  void Start() {
    if (target_->address.host == "localhost") return ConnectHere();
    resolver_.async_resolve(
        target_->address.host, std::to_string(target_->address.port),
        [self = shared_from_this()](beast::error_code error,
                                    const tcp::resolver::results_type& results) {
          if (error) return self->Fail(error);
          self->Connect(results);
        });
  }

 private:
  // Not every machine's resolver knows this name.
  void ConnectHere() {
    const uint16_t port = target_->address.port;
    Connect(std::vector<tcp::endpoint>{{asio::ip::address_v4::loopback(), port},
                                       {asio::ip::address_v6::loopback(), port}});
  }

  template <typename Endpoints>
  void Connect(const Endpoints& endpoints) {
    server_.expires_after(kConnectTime);
    server_.async_connect(
        endpoints, [self = shared_from_this()](beast::error_code error, const tcp::endpoint&) {
          if (error) return self->Fail(error);
          beast::error_code ignored;
          self->server_.socket().set_option(tcp::no_delay(true), ignored);
          self->SendRequest();
        });
  }

  void SendRequest() {
    server_.expires_after(kAnswerTime);
    asio::async_write(server_, asio::buffer(request_),
                      [self = shared_from_this()](beast::error_code error, size_t) {
                        if (error) return self->Fail(error);
                        if (self->exchange_->request().is_socket_upgrade) return self->Pass("");
                        self->ReadHead();
                      });
  }

  void ReadHead() {
    parser_.emplace();
    parser_->header_limit(kMostHeadBytes);
    parser_->body_limit(kMostDocumentBytes);
    if (exchange_->request().method == "HEAD") parser_->skip(true);
    http::async_read_header(server_, buffer_, *parser_,
                            [self = shared_from_this()](beast::error_code error, size_t) {
                              if (error) return self->Fail(error);
                              self->OnHead();
                            });
  }

  void OnHead() {
    const auto& head = parser_->get();
    if (head.result_int() < 200) return ReadHead();  // such as early hints: the answer follows
    const bool is_document = IsDocumentType(head[http::field::content_type].to_string()) &&
                             WantsDocument(exchange_->request()) &&
                             exchange_->request().method != "HEAD";
    if (is_document) TellDocument();
    if (!is_document || IsCompressed()) {
      return Pass(PassedHead() + beast::buffers_to_string(buffer_.cdata()));
    }
    http::async_read(server_, buffer_, *parser_,
                     [self = shared_from_this()](beast::error_code error, size_t) {
                       if (error) return self->Fail(error);
                       self->SendDocument();
                     });
  }

  void SendDocument() {
    HttpResponse response = Head();
    response.headers.emplace_back("Cache-Control", "no-store");
    response.body = InjectPageScript(parser_->get().body());
    exchange_->Respond(std::move(response));
  }

  bool IsCompressed() const {
    const auto encoding = parser_->get()[http::field::content_encoding].to_string();
    return !encoding.empty() && !EqualsIgnoringCase(encoding, "identity");
  }

  void TellDocument() const {
    const HttpRequest& request = exchange_->request();
    const bool is_framed = IsFrame(request);
    // Its own pages' frames name themselves; the television's is another site's.
    const bool is_top = !is_framed || request.Header("Sec-Fetch-Site") != "same-origin";
    target_->listener.on_document({request.target, is_top, WhyWithoutScript(is_framed && is_top)});
  }

  // A page without the script says nothing itself.
  std::string WhyWithoutScript(bool is_in_television) const {
    if (IsCompressed()) {
      return "The development server compresses this page although it was asked not to, so the "
             "runtime's script cannot be put into it: switch compression off there.";
    }
    std::string why;
    for (const auto& field : parser_->get()) {
      if (!why.empty()) break;
      if (!IsOneOf(field.name_string().to_string(), {"Content-Security-Policy"})) continue;
      const std::string policy = field.value().to_string();
      why = WhyPolicyForbidsScript(policy, target_->app.url());
      if (is_in_television && why.empty()) {
        why = WhyPolicyForbidsFrame(policy, target_->simulator.url());
      }
    }
    return why;
  }

  // The answer without its body, as a browser gets it.
  HttpResponse Head() const {
    const bool is_whole = WantsDocument(exchange_->request()) && parser_->is_done();
    HttpResponse response;
    response.status = static_cast<int>(parser_->get().result_int());
    for (const auto& field : parser_->get()) {
      const std::string name(field.name_string());
      std::string value(field.value());
      if (IsOneOf(name, {"Connection", "Keep-Alive"})) continue;
      if (IsOneOf(name, {"Cross-Origin-Opener-Policy", "Cross-Origin-Embedder-Policy",
                         "Cross-Origin-Resource-Policy", "Origin-Agent-Cluster"})) {
        continue;
      }
      // A document that was changed is another length, and no version that the server knows.
      if (is_whole && IsOneOf(name, {"Content-Length", "Transfer-Encoding", "ETag", "Last-Modified",
                                     "Cache-Control", "Accept-Ranges"})) {
        continue;
      }
      if (IsOneOf(name, {"Location"})) {
        value = WithPrefix(value, target_->origin.url(), target_->app.url());
      }
      response.headers.emplace_back(name, std::move(value));
    }
    target_->listener.add_headers(&response);
    return response;
  }

  std::string PassedHead() const {
    const HttpResponse response = Head();
    std::string head = "HTTP/1.1 " + std::to_string(response.status) + " " +
                       parser_->get().reason().to_string() + "\r\n";
    for (const auto& [name, value] : response.headers) {
      head.append(name).append(": ").append(value).append("\r\n");
    }
    return head + "Connection: close\r\n\r\n";
  }

  // From now on bytes go both ways as they come, `first` before those of the server.
  void Pass(std::string first) {
    std::string unread;
    base::UniqueFd client = exchange_->TakeConnection(&unread);
    server_.expires_never();
    Tunnel::Start(loop_, std::move(client), server_.release_socket(), std::move(first),
                  std::move(unread));
  }

  std::string RequestText() const {
    const HttpRequest& request = exchange_->request();
    std::string text = request.method + " " + request.target + " HTTP/1.1\r\n";
    text += "Host: " + target_->origin.host + "\r\n";
    const bool is_document = WantsDocument(request);
    for (const auto& [name, value] : request.headers) {
      if (IsOneOf(name, {"Host", "Accept-Encoding", "Keep-Alive", "Proxy-Connection",
                         "Transfer-Encoding", "Content-Length"})) {
        continue;
      }
      if (!request.is_socket_upgrade && IsOneOf(name, {"Connection"})) continue;
      if (is_document && IsOneOf(name, {"If-None-Match", "If-Modified-Since", "Range"})) continue;
      const bool names_origin = IsOneOf(name, {"Origin", "Referer"});
      text +=
          name + ": " +
          (names_origin ? WithPrefix(value, target_->app.url(), target_->origin.url()) : value) +
          "\r\n";
    }
    // Not compressed: a document has to be read.
    text += "Accept-Encoding: identity\r\n";
    if (!request.is_socket_upgrade) text += "Connection: close\r\n";
    if (!request.body.empty() || request.method == "POST" || request.method == "PUT") {
      text += "Content-Length: " + std::to_string(request.body.size()) + "\r\n";
    }
    return text + "\r\n" + request.body;
  }

  void Fail(beast::error_code error) {
    HttpResponse response =
        TextResponse(502, "The development server " + target_->origin.url() + " does not answer (" +
                              error.message() + "). Start it, and load the page again.");
    target_->listener.add_headers(&response);
    exchange_->Respond(std::move(response));
  }

  asio::io_context& loop_;
  const std::shared_ptr<const Target> target_;
  const std::shared_ptr<Exchange> exchange_;
  tcp::resolver resolver_;
  beast::tcp_stream server_;
  const std::string request_;
  beast::flat_buffer buffer_;
  std::optional<http::response_parser<http::string_body>> parser_;
};

void DevServer::Handle(const std::shared_ptr<Exchange>& exchange) const {
  std::make_shared<Run>(loop_, target_, exchange)->Start();
}

}  // namespace orvane::server
