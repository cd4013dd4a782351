// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "posix/unique_fd.h"

namespace orvane::server {

using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

// A request as a browser made it. Names of headers are compared without case.
struct HttpRequest {
  std::string method;
  std::string target;  // as it came: path and query
  std::string path;    // decoded, begins with "/"
  std::string query;   // not decoded, without the "?"
  HttpHeaders headers;
  std::string body;
  bool is_socket_upgrade = false;

  std::string_view Header(std::string_view name) const;  // empty when there is none
  std::string Query(std::string_view name) const;        // decoded; empty when there is none
  bool IsRead() const { return method == "GET" || method == "HEAD"; }
};

// Part of a file that is sent as a body.
struct FileSlice {
  base::UniqueFd file;
  uint64_t offset = 0;
  uint64_t length = 0;
};

struct HttpResponse {
  int status = 200;
  HttpHeaders headers;
  std::string body;
  std::optional<FileSlice> file;  // in place of the body
};

bool EqualsIgnoringCase(std::string_view one, std::string_view other);

// The path of a target, decoded. Nothing for one that no browser sends for a file: what does not
// begin with "/", "..", a backslash, a control character, a broken escape.
std::optional<std::string> DecodePath(std::string_view target);
// Decodes %XX; nothing when an escape is broken.
std::optional<std::string> DecodePercent(std::string_view text);
// The other way, for a path in a link or a header.
std::string EncodePath(std::string_view path);

// A refusal or a failure in words, as plain text.
HttpResponse TextResponse(int status, std::string text);
HttpResponse JsonResponse(std::string json);

}  // namespace orvane::server
