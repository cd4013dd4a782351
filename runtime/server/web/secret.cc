// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/secret.h"

#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>

namespace orvane::server {

std::string MakeSecret() {
  constexpr char kDigits[] = "0123456789abcdef";
  std::array<unsigned char, 16> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::system_error(errno, std::generic_category(), "getrandom");
  }
  std::string secret;
  for (const unsigned char byte : bytes) {
    secret.push_back(kDigits[byte >> 4U]);
    secret.push_back(kDigits[byte & 15U]);
  }
  return secret;
}

bool SecretsMatch(std::string_view one, std::string_view other) {
  if (one.size() != other.size()) return false;
  unsigned difference = 0;
  for (size_t i = 0; i < one.size(); ++i) {
    difference |= static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]);
  }
  return difference == 0;
}

}  // namespace orvane::server
