// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::server {

// Both take the value of a Content-Security-Policy header, which may hold several policies, and an
// origin as "http://host:port". They say what a policy forbids and what to do, or nothing.

// Why the document cannot have the runtime's script, which comes from the document's own origin.
std::string WhyPolicyForbidsScript(std::string_view header, std::string_view origin);

// Why a page of `simulator` cannot show the document.
std::string WhyPolicyForbidsFrame(std::string_view header, std::string_view simulator);

}  // namespace orvane::server
