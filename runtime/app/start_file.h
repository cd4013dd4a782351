// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

namespace orvane::app {

inline constexpr char kDefaultStartFile[] = "index.html";

// Says why `source` cannot be the start page of the application in `folder`, and what to do; empty
// when it can. A page elsewhere (http or https) is not looked for.
std::string WhyNoStartFile(const std::filesystem::path& folder, const std::string& source);

}  // namespace orvane::app
