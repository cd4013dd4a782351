// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <boost/asio/thread_pool.hpp>

#include "base/net.h"
#include "server/pictures/headless_browser.h"

namespace orvane::server {

// The browser without a window that belongs to a run, and pictures of the application. A thread of
// its own does what would hold up the loop; results come back on the loop.
class PictureTaker {
 public:
  // `png` is base64; `error` is empty when there is a picture.
  struct Picture {
    std::string png;
    bool is_fresh = false;  // of a page that was loaded for it
    std::string error;
  };
  using Taken = std::function<void(const Picture&)>;

  // Borrows the loop. The destructor ends the browser, and waits for what is under way.
  explicit PictureTaker(asio::io_context& loop) : loop_(loop) {}

  // Opens the simulator's page. `failed` learns why that could not be.
  void Open(const std::string& simulator_url, std::function<void(const std::string& why)> failed);
  // Takes a picture of the television's screen where a browser is open, else of the application's
  // page in a browser for that alone.
  void TakePicture(const std::string& app_url, Taken taken);

 private:
  Picture MakePicture(const std::string& app_url);

  asio::io_context& loop_;
  std::unique_ptr<HeadlessBrowser> browser_;  // of the worker
  asio::thread_pool worker_{1};
};

}  // namespace orvane::server
