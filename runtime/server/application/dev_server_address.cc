// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/dev_server_address.h"

#include <optional>
#include <stdexcept>

#include <boost/algorithm/string/predicate.hpp>
#include <glib.h>

namespace orvane::server {

namespace {

constexpr char kScheme[] = "http://";
constexpr char kSecureScheme[] = "https://";
constexpr char kForm[] = "http://HOST:PORT, such as http://localhost:5173";

// Nothing for what is no address with a host, or has no port that there is.
std::optional<DevServerAddress> Parse(const std::string& url) {
  char* text = nullptr;
  int port = -1;
  if (!boost::istarts_with(url, kScheme) ||
      g_uri_split_network(url.c_str(), G_URI_FLAGS_PARSE_RELAXED, nullptr, &text, &port, nullptr) ==
          FALSE) {
    return std::nullopt;
  }
  const std::string host = text;
  g_free(text);
  if (host.empty() || port == 0) return std::nullopt;
  std::string authority = host.find(':') == std::string::npos ? host : "[" + host + "]";
  if (port > 0) authority += ":" + std::to_string(port);
  return DevServerAddress{host, static_cast<uint16_t>(port < 0 ? 80 : port), authority};
}

bool IsThisMachine(const std::string& host) {
  return host == "localhost" || host == "::1" || boost::starts_with(host, "127.");
}

}  // namespace

DevServerAddress ParseDevServerAddress(const std::string& url) {
  if (boost::istarts_with(url, kSecureScheme)) {
    throw std::runtime_error("--url " + url +
                             ": only http is relayed. Switch https off in the development server, "
                             "and give it as " +
                             kForm + ".");
  }
  const auto address = Parse(url);
  if (!address) {
    throw std::runtime_error("--url " + url + ": give the development server as " + kForm + ".");
  }
  return *address;
}

std::string DevServerOfContent(const std::string& content) {
  if (!boost::istarts_with(content, kScheme) && !boost::istarts_with(content, kSecureScheme)) {
    return {};
  }
  const auto address = Parse(content);
  if (address && IsThisMachine(address->host)) return content;
  throw std::runtime_error(
      "config.xml: the content is " + content +
      ", and only http addresses of this machine are served. Serve a copy of the page "
      "here, and give its address with --url http://localhost:PORT.");
}

}  // namespace orvane::server
