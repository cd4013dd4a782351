// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "browser/open_in_browser.h"

#include <cstdlib>

#include "browser/child_process.h"

namespace orvane::browser {

namespace {

bool HasDisplay() {
  for (const char* name : {"WAYLAND_DISPLAY", "DISPLAY"}) {
    const char* const text = std::getenv(name);
    if (text != nullptr && *text != '\0') return true;
  }
  return false;
}

}  // namespace

bool OpenInBrowser(const std::string& url) {
  const std::string opener = FindProgram({"xdg-open"});
  if (!HasDisplay() || opener.empty()) return false;
  // The opener hands the address over. Some openers stay for as long as the browser does, so it is
  // left to end by itself.
  return ChildProcess::StartAlone({opener, url});
}

}  // namespace orvane::browser
