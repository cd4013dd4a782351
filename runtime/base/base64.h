// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane::base {

// Bytes as text, in the standard alphabet with padding: how they stand in JSON.
std::string EncodeBase64(std::string_view bytes);

// The bytes of a base64 text of the standard alphabet with its padding; empty for one that is none.
std::optional<std::string> DecodeBase64(std::string_view text);

}  // namespace orvane::base
