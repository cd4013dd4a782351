// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/net.h"
#include "posix/unique_fd.h"

namespace orvane::server {

// A request as a browser made it.
struct HttpRequest : http::request<http::string_body> {
  std::string path;  // decoded, begins with "/"; empty for one that DecodePath does not take

  std::string_view Header(std::string_view name) const;  // empty when there is none
  std::string Query(const std::string& name) const;      // decoded; empty when there is none
  bool IsRead() const { return method() == http::verb::get || method() == http::verb::head; }
};

// Part of a file that is sent as a body.
struct FileSlice {
  base::UniqueFd file;
  uint64_t offset = 0;
  uint64_t length = 0;
};

struct HttpResponse : http::response<http::string_body> {
  std::optional<FileSlice> file;  // in place of the body
};

inline std::string_view View(beast::string_view text) { return {text.data(), text.size()}; }

// The path of a target, decoded. Nothing for one that no browser sends for a file: what does not
// begin with "/", "..", a backslash, a control character, a broken escape.
std::optional<std::string> DecodePath(std::string_view target);
// The other way, for a path in a link or a header.
std::string EncodePath(const std::string& path);

// An answer that no browser keeps, or takes for another type.
HttpResponse BodyResponse(std::string_view type, std::string_view body);
// A refusal or a failure in words, as plain text.
HttpResponse TextResponse(unsigned status, const std::string& text);

}  // namespace orvane::server
