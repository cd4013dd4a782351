// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::server {

// Puts the script element for the page's runtime into an HTML document, as the first thing in it
// that runs: behind the document type and the start tags of "html" and "head", where these are. All
// else, with its encoding, stays as it is.
std::string InjectPageScript(std::string_view html);

}  // namespace orvane::server
