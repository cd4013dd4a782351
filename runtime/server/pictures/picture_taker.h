// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace boost::asio {
class io_context;
}

namespace orvane::server {
class HeadlessBrowser;
}

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
  using Receiver = std::function<void(const Picture&)>;

  explicit PictureTaker(boost::asio::io_context& loop);  // borrowed
  ~PictureTaker();  // ends the browser; waits for what is under way
  PictureTaker(const PictureTaker&) = delete;
  PictureTaker& operator=(const PictureTaker&) = delete;

  // Opens the simulator's page. `failed` learns why that could not be.
  void Open(const std::string& simulator_url, std::function<void(const std::string& why)> failed);
  // Takes a picture of the television's screen where a browser is open, else of the application's
  // page in a browser for that alone.
  void TakePicture(const std::string& app_url, Receiver receiver);

 private:
  void Do(std::function<void()> job);
  void Work();
  Picture MakePicture(const std::string& app_url);

  boost::asio::io_context& loop_;
  std::unique_ptr<server::HeadlessBrowser> browser_;  // of the thread
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> jobs_;  // guarded by mutex_
  bool ending_ = false;                     // guarded by mutex_
  std::thread thread_;
};

}  // namespace orvane::server
