// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/origin_check.h"

#include <algorithm>

namespace orvane::server {

namespace {

size_t CountOf(const HttpRequest& request, std::string_view name) {
  return static_cast<size_t>(
      std::count_if(request.headers.begin(), request.headers.end(),
                    [&](const auto& header) { return EqualsIgnoringCase(header.first, name); }));
}

}  // namespace

std::string WhyForeign(const HttpRequest& request, const Origin& origin) {
  // A name that another site's owner gave this machine's address comes with that name.
  if (CountOf(request, "Host") != 1 || request.Header("Host") != origin.host) {
    return "This server answers as " + origin.host + " only.";
  }
  if (CountOf(request, "Origin") > 1) return "A request has one origin.";
  if (CountOf(request, "Origin") == 1 && request.Header("Origin") != origin.url()) {
    return "Pages of " + std::string(request.Header("Origin")) + " may not ask for this.";
  }
  const std::string_view site = request.Header("Sec-Fetch-Site");
  const bool is_shown = request.IsRead() && request.Header("Sec-Fetch-Mode") == "navigate";
  if ((site == "cross-site" || site == "same-site") && !is_shown) {
    return "Pages of other sites may not ask for this.";
  }
  return "";
}

bool IsFromOwnPage(const HttpRequest& request, const Origin& origin) {
  const std::string_view site = request.Header("Sec-Fetch-Site");
  if (!site.empty()) return site == "same-origin";
  const std::string own = origin.url() + "/";
  return request.Header("Referer").substr(0, own.size()) == own;
}

}  // namespace orvane::server
