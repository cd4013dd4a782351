// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/http_message.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace orvane::server {

namespace {

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }

bool HasParentStep(std::string_view path) {
  while (!path.empty()) {
    const size_t end = std::min(path.find('/'), path.size());
    if (path.substr(0, end) == "..") return true;
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return false;
}

bool IsPlainInPath(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
         std::string_view("-._~!$&'()*+,;=:@/").find(c) != std::string_view::npos;
}

}  // namespace

bool EqualsIgnoringCase(std::string_view one, std::string_view other) {
  return one.size() == other.size() &&
         std::equal(one.begin(), one.end(), other.begin(), [](unsigned char a, unsigned char b) {
           return std::tolower(a) == std::tolower(b);
         });
}

std::string_view HttpRequest::Header(std::string_view name) const {
  for (const auto& [header, value] : headers) {
    if (EqualsIgnoringCase(header, name)) return value;
  }
  return {};
}

std::string HttpRequest::Query(std::string_view name) const {
  std::string_view rest = query;
  while (!rest.empty()) {
    const size_t end = std::min(rest.find('&'), rest.size());
    const std::string_view pair = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const size_t equals = std::min(pair.find('='), pair.size());
    if (pair.substr(0, equals) != name) continue;
    return DecodePercent(pair.substr(std::min(equals + 1, pair.size()))).value_or("");
  }
  return {};
}

std::optional<std::string> DecodePercent(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  while (!text.empty()) {
    if (text[0] != '%') {
      decoded.push_back(text[0]);
      text.remove_prefix(1);
      continue;
    }
    unsigned byte = 0;
    const std::string_view digits = text.substr(1, 2);
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    if (digits.size() != 2 || error != std::errc() || end != digits.data() + 2) return std::nullopt;
    decoded.push_back(static_cast<char>(byte));
    text.remove_prefix(3);
  }
  return decoded;
}

std::optional<std::string> DecodePath(std::string_view target) {
  auto path = DecodePercent(target.substr(0, target.find_first_of("?#")));
  if (!path || path->empty() || path->front() != '/') return std::nullopt;
  if (std::any_of(path->begin(), path->end(), IsControl)) return std::nullopt;
  if (path->find('\\') != std::string::npos || HasParentStep(*path)) return std::nullopt;
  return path;
}

std::string EncodePath(std::string_view path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : path) {
    if (IsPlainInPath(c)) {
      encoded.push_back(c);
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    encoded.append({'%', kDigits[byte >> 4U], kDigits[byte & 15U]});
  }
  return encoded;
}

HttpResponse TextResponse(int status, std::string text) {
  HttpResponse response;
  response.status = status;
  response.headers = {{"Content-Type", "text/plain; charset=utf-8"},
                      {"X-Content-Type-Options", "nosniff"},
                      {"Cache-Control", "no-store"}};
  response.body = std::move(text);
  response.body += '\n';
  return response;
}

HttpResponse JsonResponse(std::string json) {
  HttpResponse response;
  response.headers = {{"Content-Type", "application/json"},
                      {"X-Content-Type-Options", "nosniff"},
                      {"Cache-Control", "no-store"}};
  response.body = std::move(json);
  return response;
}

}  // namespace orvane::server
