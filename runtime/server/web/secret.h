// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace orvane::server {

// 128 bits from the kernel, as 32 hexadecimal digits.
std::string MakeSecret();

// Takes the same time wherever the two differ.
bool SecretsMatch(std::string_view one, std::string_view other);

}  // namespace orvane::server
