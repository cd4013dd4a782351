// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace orvane::server {

// Where a development server is reached.
struct DevServerAddress {
  std::string host;  // without the brackets of a numeric address
  uint16_t port = 0;
  std::string authority;  // host and port as they are written
};

// Reads "http://HOST:PORT", with or without a path, which is not used here. Throws
// std::runtime_error for another form.
DevServerAddress ParseDevServerAddress(const std::string& url);

// The development server of an application whose config.xml names an address as its content: that
// address if it is an http one of this machine, nothing if the content is a file. Throws
// std::runtime_error for any other address.
std::string DevServerOfContent(const std::string& content);

}  // namespace orvane::server
