// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/origin_check.h"

namespace orvane::server {

std::string WhyForeign(const HttpRequest& request, const Origin& origin) {
  // A name that another site's owner gave this machine's address comes with that name.
  if (request.count("Host") != 1 || request.Header("Host") != origin.host) {
    return "This server answers as " + origin.host + " only.";
  }
  if (request.count("Origin") > 1) return "A request has one origin.";
  if (request.count("Origin") == 1 && request.Header("Origin") != origin.url()) {
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
