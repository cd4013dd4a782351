// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/picture_taker.h"

#include <chrono>
#include <utility>

#include "base/net.h"
#include "server/pictures/browser_error.h"
#include "server/pictures/headless_browser.h"

namespace orvane::server {

namespace {

constexpr std::chrono::seconds kBrowserTime{30};
constexpr server::ViewSize kSimulatorView{1440, 900};
constexpr server::ViewSize kPageView{1920, 1080};
constexpr char kScreenSelector[] = ".screen";

}  // namespace

PictureTaker::PictureTaker(asio::io_context& loop) : loop_(loop), thread_([this] { Work(); }) {}

PictureTaker::~PictureTaker() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    ending_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void PictureTaker::Do(std::function<void()> job) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    jobs_.push_back(std::move(job));
  }
  changed_.notify_all();
}

void PictureTaker::Work() {
  while (true) {
    std::function<void()> job;
    {
      std::unique_lock<std::mutex> lock(mutex_);
      changed_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
      if (ending_) break;
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    job();
  }
  browser_.reset();
}

void PictureTaker::Open(const std::string& simulator_url,
                        std::function<void(const std::string& why)> failed) {
  Do([this, simulator_url, failed = std::move(failed)] {
    try {
      browser_ =
          std::make_unique<server::HeadlessBrowser>(simulator_url, kSimulatorView, kBrowserTime);
    } catch (const server::BrowserError& error) {
      asio::post(loop_, [failed, why = std::string(error.what())] { failed(why); });
    }
  });
}

void PictureTaker::TakePicture(const std::string& app_url, Receiver receiver) {
  Do([this, app_url, receiver = std::move(receiver)] {
    Picture picture;
    try {
      picture = MakePicture(app_url);
    } catch (const server::BrowserError& error) {
      picture.error = error.what();
    }
    asio::post(loop_, [receiver, picture] { receiver(picture); });
  });
}

PictureTaker::Picture PictureTaker::MakePicture(const std::string& app_url) {
  if (browser_ && browser_->running()) {
    browser_->WaitUntilDrawn(kBrowserTime);
    return {browser_->ScreenshotOf(kScreenSelector, kPageView.width, kBrowserTime), false, ""};
  }
  server::HeadlessBrowser fresh(app_url, kPageView, kBrowserTime);
  fresh.WaitUntilDrawn(kBrowserTime);
  return {fresh.Screenshot(kBrowserTime), true, ""};
}

}  // namespace orvane::server
