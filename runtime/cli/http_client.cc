// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/http_client.h"

#include <boost/algorithm/string/predicate.hpp>

#include "base/net.h"

namespace orvane::cli {

namespace {

using std::chrono::milliseconds;

constexpr size_t kLongestBody = size_t{64} << 20;

// localhost and every name below it are this machine, also where no resolver knows them.
std::optional<asio::ip::address> AddressOf(const std::string& host) {
  if (host == "[::1]") return asio::ip::address_v6::loopback();
  if (host == "localhost" || host == "127.0.0.1" || boost::ends_with(host, ".localhost")) {
    return asio::ip::address_v4::loopback();
  }
  return std::nullopt;
}

std::string HostOf(const LocalAddress& address) { return address.host + ":" + address.port; }

// Starts an operation and waits until it is done; its stream's own time limit ends it.
template <class Start>
beast::error_code Await(asio::io_context& loop, const Start& start) {
  std::optional<beast::error_code> result;
  start([&result](beast::error_code error, auto...) { result = error; });
  loop.restart();
  while (!result) loop.run_one();
  return *result;
}

void Connect(asio::io_context& loop, beast::tcp_stream& stream, const LocalAddress& address) {
  beast::error_code error;
  const tcp::endpoint endpoint(AddressOf(address.host).value_or(asio::ip::address()),
                               static_cast<uint16_t>(std::stoul(address.port)));
  error = Await(loop, [&](auto done) { stream.async_connect(endpoint, done); });
  if (error == beast::error::timeout) {
    throw HttpError("no connection to " + HostOf(address) + " was made in time");
  }
  if (error) {
    throw NobodyListens("nobody answers at " + HostOf(address) + ": " + error.message());
  }
}

std::string WhyNoAnswer(beast::error_code error) {
  if (error == beast::error::timeout) return "no answer came in time";
  if (error == http::error::end_of_stream) return "the connection was closed without an answer";
  if (error.category() == make_error_code(http::error::bad_version).category()) {
    return "the answer is no HTTP that could be read: " + error.message();
  }
  return "the answer broke off: " + error.message();
}

}  // namespace

std::optional<LocalAddress> ParseLocalAddress(const std::string& url) {
  const size_t scheme = url.find("://");
  if (scheme == std::string::npos) return std::nullopt;
  const size_t begin = scheme + 3;
  const std::string authority = url.substr(begin, url.find_first_of("/?#", begin) - begin);
  const size_t colon = authority.rfind(':');
  if (colon == std::string::npos || colon + 1 == authority.size()) return std::nullopt;
  LocalAddress address{authority.substr(0, colon), authority.substr(colon + 1)};
  constexpr size_t kMostDigits = 5;
  const bool is_number = address.port.size() <= kMostDigits &&
                         address.port.find_first_not_of("0123456789") == std::string::npos;
  if (!is_number || !AddressOf(address.host)) return std::nullopt;
  return address;
}

HttpAnswer HttpPost(const LocalAddress& address, const std::string& path,
                    const std::vector<std::pair<std::string, std::string>>& headers,
                    const std::string& body, milliseconds patience) {
  http::request<http::string_body> request(http::verb::post, path, 11, body);
  request.set(http::field::host, HostOf(address));
  request.set(http::field::connection, "close");
  for (const auto& [name, value] : headers) request.set(name, value);
  request.prepare_payload();

  asio::io_context loop;
  beast::tcp_stream stream(loop);
  stream.expires_after(patience);
  Connect(loop, stream, address);
  beast::error_code error =
      Await(loop, [&](auto done) { http::async_write(stream, request, done); });
  if (error) throw HttpError("the request was not taken: " + error.message());
  beast::flat_buffer buffer;
  http::response_parser<http::string_body> parser;
  parser.body_limit(kLongestBody);
  error = Await(loop, [&](auto done) { http::async_read(stream, buffer, parser, done); });
  if (error) throw HttpError(WhyNoAnswer(error));
  return {parser.get().result_int(), std::move(parser.get().body())};
}

struct MessageStream::Connection {
  asio::io_context loop;
  websocket::stream<beast::tcp_stream> stream{loop};
  beast::flat_buffer buffer;
};

MessageStream::MessageStream(const LocalAddress& address, const std::string& target,
                             milliseconds patience)
    : connection_(std::make_unique<Connection>()) {
  asio::io_context& loop = connection_->loop;
  auto& stream = connection_->stream;
  beast::get_lowest_layer(stream).expires_after(patience);
  Connect(loop, beast::get_lowest_layer(stream), address);
  beast::get_lowest_layer(stream).expires_never();
  stream.set_option(websocket::stream_base::timeout{patience, patience, true});
  const beast::error_code error =
      Await(loop, [&](auto done) { stream.async_handshake(HostOf(address), target, done); });
  if (error) throw HttpError(WhyNoAnswer(error));
}

MessageStream::~MessageStream() = default;

std::optional<std::string_view> MessageStream::Next() {
  auto& stream = connection_->stream;
  beast::flat_buffer& buffer = connection_->buffer;
  buffer.clear();
  const beast::error_code error =
      Await(connection_->loop, [&](auto done) { stream.async_read(buffer, done); });
  if (error) return std::nullopt;
  return std::string_view(static_cast<const char*>(buffer.cdata().data()), buffer.size());
}

}  // namespace orvane::cli
