// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "server/web/http_message.h"

namespace orvane::server {

// One of the two places that the server is reached at: "127.0.0.1:8630", "http://127.0.0.1:8630".
struct Origin {
  std::string host;

  std::string url() const { return "http://" + host; }
  std::string socket_url() const { return "ws://" + host; }
};

// Why the request is not for this origin, or comes from a page that may not send it; empty when it
// may. A page of another site may have the browser show a document of this one (and is stopped by
// what the document itself says of frames), and nothing else.
std::string WhyForeign(const HttpRequest& request, const Origin& origin);

// Whether the browser says that a page of the origin itself made the request.
bool IsFromOwnPage(const HttpRequest& request, const Origin& origin);

}  // namespace orvane::server
