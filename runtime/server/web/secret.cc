// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/secret.h"

#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <system_error>

#include <boost/algorithm/hex.hpp>

namespace orvane::server {

std::string MakeSecret() {
  std::array<unsigned char, 16> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::system_error(errno, std::generic_category(), "getrandom");
  }
  std::string secret;
  boost::algorithm::hex_lower(bytes.begin(), bytes.end(), std::back_inserter(secret));
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
