// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/picture_taker.h"

#include <chrono>
#include <stdexcept>
#include <utility>

namespace orvane::server {

namespace {

constexpr std::chrono::seconds kBrowserTime{30};
constexpr ViewSize kSimulatorView{1440, 900};
constexpr ViewSize kPageView{1920, 1080};
constexpr char kScreenSelector[] = ".screen";

}  // namespace

void PictureTaker::Open(const std::string& simulator_url,
                        std::function<void(const std::string& why)> failed) {
  asio::post(worker_, [this, simulator_url, failed = std::move(failed)] {
    try {
      browser_ = std::make_unique<HeadlessBrowser>(simulator_url, kSimulatorView, kBrowserTime);
    } catch (const std::runtime_error& error) {
      asio::post(loop_, [failed, why = std::string(error.what())] { failed(why); });
    }
  });
}

void PictureTaker::TakePicture(const std::string& app_url, Taken taken) {
  asio::post(worker_, [this, app_url, taken = std::move(taken)] {
    Picture picture;
    try {
      picture = MakePicture(app_url);
    } catch (const std::runtime_error& error) {
      picture.error = error.what();
    }
    asio::post(loop_, [taken, picture] { taken(picture); });
  });
}

PictureTaker::Picture PictureTaker::MakePicture(const std::string& app_url) {
  if (browser_ && browser_->running()) {
    browser_->WaitUntilDrawn();
    return {browser_->ScreenshotOf(kScreenSelector, kPageView.width), false, ""};
  }
  HeadlessBrowser fresh(app_url, kPageView, kBrowserTime);
  fresh.WaitUntilDrawn();
  return {fresh.Screenshot(), true, ""};
}

}  // namespace orvane::server
