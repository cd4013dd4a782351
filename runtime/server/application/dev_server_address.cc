// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/dev_server_address.h"

#include <charconv>
#include <string_view>

#include <boost/algorithm/string/predicate.hpp>

namespace orvane::server {

namespace {

constexpr std::string_view kScheme = "http://";
constexpr std::string_view kSecureScheme = "https://";
constexpr char kForm[] = "http://HOST:PORT, such as http://localhost:5173";

bool BeginsWith(std::string_view url, std::string_view scheme) {
  return boost::istarts_with(url, scheme);
}

std::string_view AuthorityOf(std::string_view url) {
  if (!BeginsWith(url, kScheme)) return {};
  url.remove_prefix(kScheme.size());
  return url.substr(0, url.find_first_of("/?#"));
}

std::string_view HostOf(std::string_view authority) {
  const size_t bracket = authority.find(']');
  if (authority.substr(0, 1) == "[" && bracket != std::string_view::npos) {
    return authority.substr(1, bracket - 1);
  }
  return authority.substr(0, authority.find(':'));
}

// 0: it is none.
uint16_t PortOf(std::string_view authority) {
  const size_t bracket = authority.find(']');
  const size_t colon = authority.find(':', bracket == std::string_view::npos ? 0 : bracket);
  if (colon == std::string_view::npos) return 80;
  const std::string_view digits = authority.substr(colon + 1);
  uint16_t port = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  return error == std::errc() && end == digits.data() + digits.size() ? port : uint16_t{0};
}

bool IsThisMachine(std::string_view host) {
  return host == "localhost" || host == "::1" || host.substr(0, 4) == "127.";
}

}  // namespace

DevServerAddress ParseDevServerAddress(const std::string& url) {
  if (BeginsWith(url, kSecureScheme)) {
    throw std::runtime_error(
        "--url " + url +
        ": only http is relayed. Switch https off in the development server, and give "
        "it as " +
        kForm + ".");
  }
  const std::string_view authority = AuthorityOf(url);
  DevServerAddress address;
  address.host = HostOf(authority);
  address.port = PortOf(authority);
  address.authority = authority;
  if (address.host.empty() || address.port == 0) {
    throw std::runtime_error("--url " + url + ": give the development server as " + kForm + ".");
  }
  return address;
}

std::string DevServerOfContent(const std::string& content) {
  if (!BeginsWith(content, kScheme) && !BeginsWith(content, kSecureScheme)) return {};
  if (IsThisMachine(HostOf(AuthorityOf(content)))) return content;
  throw std::runtime_error(
      "config.xml: the content is " + content +
      ", and only http addresses of this machine are served. Serve a copy of the page "
      "here, and give its address with --url http://localhost:PORT.");
}

}  // namespace orvane::server
