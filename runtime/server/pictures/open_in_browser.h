// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace orvane::server {

// Opens the address in the desktop's own browser, with xdg-open. False when there is no display or
// no xdg-open; does not wait for the browser. Any thread.
bool OpenInBrowser(const std::string& url);

}  // namespace orvane::server
