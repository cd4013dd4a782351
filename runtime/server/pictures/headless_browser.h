// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <string>

#include "base/json.h"
#include "base/temporary_folder.h"

namespace orvane::base {
class ChildProcess;
}

namespace orvane::server {

class DevToolsPipe;

struct ViewSize {
  int width = 1920;  // CSS pixels
  int height = 1080;
};

// A browser without a window, on one page, with a profile of its own that goes with it. The
// program is "chromium" or "chromium-browser" on the PATH, or what $ORVANE_BROWSER names.
//
// One thread at a time; every member may block, for as long as `limit` at each thing that it asks
// of the browser. Throws std::runtime_error, with a sentence for people and the remedy where there
// is one: there is no browser, it does not start, it is gone, or it takes too long.
class HeadlessBrowser {
 public:
  HeadlessBrowser(const std::string& url, ViewSize size, std::chrono::milliseconds limit);
  ~HeadlessBrowser();  // ends it, in two seconds at the most
  HeadlessBrowser(const HeadlessBrowser&) = delete;
  HeadlessBrowser& operator=(const HeadlessBrowser&) = delete;

  pid_t pid() const;
  bool running() const;

  // Returns when the page has loaded, its fonts are there and it was drawn.
  void WaitUntilDrawn();

  // A PNG, as base64: of what the window shows, or of the element that the CSS selector finds,
  // drawn `width` pixels wide.
  std::string Screenshot() { return Capture(Json::object()); }
  std::string ScreenshotOf(const std::string& selector, int width);

 private:
  Json Call(const std::string& method, const Json& parameters);
  std::string FindPage();
  Json Evaluate(const std::string& expression);
  std::string Capture(const Json& parameters);

  const std::chrono::milliseconds limit_;
  // In this order: the profile's folder goes when the process is gone.
  const base::TemporaryFolder profile_;
  std::unique_ptr<base::ChildProcess> process_;
  std::unique_ptr<DevToolsPipe> pipe_;
  std::string session_;
};

}  // namespace orvane::server
