// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::server {

// Why a document with this Content-Security-Policy header cannot have the runtime's script, which
// comes from the document's own origin, and what to do; empty when it can. `origin` is
// "http://host:port".
std::string WhyPolicyForbidsScript(std::string_view policy, std::string_view origin);

}  // namespace orvane::server
