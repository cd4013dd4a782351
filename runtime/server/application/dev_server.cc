// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/dev_server.h"

#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <boost/algorithm/string/predicate.hpp>

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

bool IsFrame(const HttpRequest& request) {
  const std::string_view destination = request.Header("Sec-Fetch-Dest");
  return destination == "iframe" || destination == "frame" || destination == "embed" ||
         destination == "object";
}

void Erase(http::fields& fields, std::initializer_list<beast::string_view> names) {
  for (const beast::string_view name : names) fields.erase(name);
}

// Where the field names an address of `from`, it names `to` then.
void ReplaceOrigin(http::fields& fields, http::field name, const Origin& from, const Origin& to) {
  const std::string value(fields[name]);
  if (!boost::starts_with(value, from.url())) return;
  fields.set(name, to.url() + value.substr(from.url().size()));
}

}  // namespace

DevServer::DevServer(asio::io_context& loop, const std::string& url, Origins origins, Hooks hooks)
    : loop_(loop),
      address_(ParseDevServerAddress(url)),
      origin_{address_.authority},
      origins_(std::move(origins)),
      hooks_(std::move(hooks)) {}

// One request on its way.
class DevServer::Relay : public std::enable_shared_from_this<Relay> {
 public:
  Relay(const DevServer& owner, std::shared_ptr<HttpConnection> connection)
      : owner_(owner),
        connection_(std::move(connection)),
        resolver_(owner.loop_),
        server_(owner.loop_),
        request_(MakeRequest()) {}

  void Start() {
    if (owner_.address_.host == "localhost") return ConnectHere();
    resolver_.async_resolve(
        owner_.address_.host, std::to_string(owner_.address_.port),
        [self = shared_from_this()](beast::error_code error,
                                    const tcp::resolver::results_type& results) {
          if (error) return self->Fail(error);
          self->Connect(results);
        });
  }

 private:
  // Not every machine's resolver knows this name.
  void ConnectHere() {
    const uint16_t port = owner_.address_.port;
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
    http::async_write(server_, request_,
                      [self = shared_from_this()](beast::error_code error, size_t) {
                        if (error) return self->Fail(error);
                        if (websocket::is_upgrade(self->request_)) return self->Pass("");
                        self->ReadHead();
                      });
  }

  void ReadHead() {
    parser_.emplace();
    parser_->header_limit(kMostHeadBytes);
    parser_->body_limit(kMostDocumentBytes);
    parser_->skip(IsHeadRequest());
    http::async_read_header(server_, buffer_, *parser_,
                            [self = shared_from_this()](beast::error_code error, size_t) {
                              if (error) return self->Fail(error);
                              self->OnHead();
                            });
  }

  void OnHead() {
    const auto& head = parser_->get();
    if (head.result_int() < 200) return ReadHead();  // such as early hints: the answer follows
    const bool is_document = IsDocumentType(View(head[http::field::content_type])) &&
                             WantsDocument(connection_->request()) && !IsHeadRequest();
    if (is_document) TellDocument();
    if (!is_document || IsCompressed()) {
      std::ostringstream passed;
      HttpResponse response = Head();
      response.set(http::field::connection, "close");
      passed << response.base() << beast::buffers_to_string(buffer_.cdata());
      return Pass(passed.str());
    }
    http::async_read(server_, buffer_, *parser_,
                     [self = shared_from_this()](beast::error_code error, size_t) {
                       if (error) return self->Fail(error);
                       self->SendDocument();
                     });
  }

  void SendDocument() {
    HttpResponse response = Head();
    // A document that was changed is another length, and no version that the server knows.
    Erase(response,
          {"Content-Length", "Transfer-Encoding", "ETag", "Last-Modified", "Accept-Ranges"});
    response.set(http::field::cache_control, "no-store");
    response.body() = InjectPageScript(parser_->get().body());
    connection_->Respond(std::move(response));
  }

  bool IsHeadRequest() const { return connection_->request().method() == http::verb::head; }

  bool IsCompressed() const {
    const auto encoding = parser_->get()[http::field::content_encoding];
    return !encoding.empty() && !boost::iequals(encoding, "identity");
  }

  void TellDocument() const {
    const HttpRequest& request = connection_->request();
    const bool is_framed = IsFrame(request);
    // Its own pages' frames name themselves; the television's is another site's.
    const bool is_top = !is_framed || request.Header("Sec-Fetch-Site") != "same-origin";
    owner_.hooks_.on_document(
        {request.target().to_string(), is_top, WhyWithoutScript(is_framed && is_top)});
  }

  // A page without the script says nothing itself.
  std::string WhyWithoutScript(bool is_in_television) const {
    if (IsCompressed()) {
      return "The development server compresses this page although it was asked not to, so the "
             "runtime's script cannot be put into it: switch compression off there.";
    }
    std::string why;
    for (const auto& field : parser_->get()) {
      if (!boost::iequals(field.name_string(), "Content-Security-Policy")) continue;
      if (why.empty()) why = WhyPolicyForbidsScript(View(field.value()), owner_.origins_.app.url());
      if (is_in_television && why.empty()) {
        why = WhyPolicyForbidsFrame(View(field.value()), owner_.origins_.simulator.url());
      }
    }
    return why;
  }

  // The answer without its body, as a browser gets it.
  HttpResponse Head() const {
    HttpResponse response;
    response.base() = parser_->get().base();
    response.version(11);
    Erase(response,
          {"Connection", "Keep-Alive", "Cross-Origin-Opener-Policy", "Cross-Origin-Embedder-Policy",
           "Cross-Origin-Resource-Policy", "Origin-Agent-Cluster"});
    ReplaceOrigin(response, http::field::location, owner_.origin_, owner_.origins_.app);
    owner_.hooks_.add_headers(&response);
    return response;
  }

  // From now on bytes go both ways as they come, `first` before those of the server.
  void Pass(std::string first) {
    std::string unread;
    tcp::socket client = connection_->TakeConnection(&unread);
    server_.expires_never();
    Tunnel::Start(std::move(client), server_.release_socket(), std::move(first), std::move(unread));
  }

  http::request<http::string_body> MakeRequest() const {
    const http::request<http::string_body>& received = connection_->request();
    http::request<http::string_body> request = received;
    request.version(11);
    request.set(http::field::host, owner_.origin_.host);
    // Not compressed: a document has to be read.
    request.set(http::field::accept_encoding, "identity");
    Erase(request, {"Keep-Alive", "Proxy-Connection", "Transfer-Encoding", "Content-Length"});
    if (!websocket::is_upgrade(request)) request.set(http::field::connection, "close");
    if (WantsDocument(connection_->request())) {
      Erase(request, {"If-None-Match", "If-Modified-Since", "Range"});
    }
    for (const auto name : {http::field::origin, http::field::referer}) {
      ReplaceOrigin(request, name, owner_.origins_.app, owner_.origin_);
    }
    request.prepare_payload();
    return request;
  }

  void Fail(beast::error_code error) {
    HttpResponse response =
        TextResponse(502, "The development server " + owner_.origin_.url() + " does not answer (" +
                              error.message() + "). Start it, and load the page again.");
    owner_.hooks_.add_headers(&response);
    connection_->Respond(std::move(response));
  }

  const DevServer& owner_;
  const std::shared_ptr<HttpConnection> connection_;
  tcp::resolver resolver_;
  beast::tcp_stream server_;
  const http::request<http::string_body> request_;
  beast::flat_buffer buffer_;
  std::optional<http::response_parser<http::string_body>> parser_;
};

void DevServer::Handle(const std::shared_ptr<HttpConnection>& connection) const {
  std::make_shared<Relay>(*this, connection)->Start();
}

}  // namespace orvane::server
