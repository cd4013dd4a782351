// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane::cli {

// The bytes of a base64 text of the standard alphabet with its padding; empty for one that is none.
std::optional<std::string> DecodeBase64(std::string_view text);

}  // namespace orvane::cli
