// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/open_in_browser.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "base/child_process.h"

namespace orvane::server {

namespace {

bool HasDisplay() {
  constexpr std::array<const char*, 2> kNames{"WAYLAND_DISPLAY", "DISPLAY"};
  return std::any_of(kNames.begin(), kNames.end(), [](const char* name) {
    const char* const text = std::getenv(name);
    return text != nullptr && *text != '\0';
  });
}

}  // namespace

bool OpenInBrowser(const std::string& url) {
  const std::string opener = base::FindProgram({"xdg-open"});
  if (!HasDisplay() || opener.empty()) return false;
  // The opener hands the address over. Some openers stay for as long as the browser does, so it is
  // left to end by itself.
  return base::ChildProcess::StartAlone({opener, url});
}

}  // namespace orvane::server
