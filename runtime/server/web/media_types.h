// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace orvane::server {

// What a browser is told of a file, by the end of its name. Text has no charset where a browser
// finds it out by itself, as it does for a file of a packaged application.
std::string_view MediaTypeOf(std::string_view path);

// Whether a document of this type runs scripts.
bool IsDocumentType(std::string_view type);

}  // namespace orvane::server
