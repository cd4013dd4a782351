// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/http_message.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>
#include <glib.h>

namespace orvane::server {

namespace {

using GlibText = std::unique_ptr<char, decltype(&g_free)>;

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }

// Nothing for a broken escape, or one of a zero byte or an illegal character.
std::optional<std::string> Unescape(std::string_view text, const char* illegal) {
  const GlibText plain(g_uri_unescape_segment(text.data(), text.data() + text.size(), illegal),
                       g_free);
  if (!plain) return std::nullopt;
  return plain.get();
}

}  // namespace

std::string_view HttpRequest::Header(std::string_view name) const {
  return View((*this)[beast::string_view(name.data(), name.size())]);
}

std::string HttpRequest::Query(const std::string& name) const {
  const std::string whole(target());
  std::vector<std::string> pairs;
  boost::split(pairs, whole.substr(std::min(whole.find('?'), whole.size() - 1) + 1),
               [](char c) { return c == '&'; });
  for (const std::string& pair : pairs) {
    if (!boost::starts_with(pair, name + "=")) continue;
    return Unescape(pair.substr(name.size() + 1), "").value_or("");
  }
  return {};
}

std::optional<std::string> DecodePath(std::string_view target) {
  auto path = Unescape(target.substr(0, target.find_first_of("?#")), "\\");
  if (!path || path->empty() || path->front() != '/') return std::nullopt;
  if (std::any_of(path->begin(), path->end(), IsControl)) return std::nullopt;
  const std::filesystem::path steps(*path);
  if (std::find(steps.begin(), steps.end(), "..") != steps.end()) return std::nullopt;
  if (path->find('\\') != std::string::npos) return std::nullopt;
  return path;
}

std::string EncodePath(const std::string& path) {
  return GlibText(g_uri_escape_string(path.c_str(), "!$&'()*+,;=:@/", FALSE), g_free).get();
}

HttpResponse BodyResponse(std::string_view type, std::string_view body) {
  HttpResponse response;
  response.set(http::field::content_type, beast::string_view(type.data(), type.size()));
  response.set(http::field::cache_control, "no-store");
  response.set("X-Content-Type-Options", "nosniff");
  response.body() = body;
  return response;
}

HttpResponse TextResponse(unsigned status, const std::string& text) {
  HttpResponse response = BodyResponse("text/plain; charset=utf-8", text + '\n');
  response.result(status);
  return response;
}

}  // namespace orvane::server
