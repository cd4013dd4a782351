// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/screen_saver.h"

namespace tvset {

ScreenSaver::ScreenSaver(EventHub& events) : events_(events) {}

ScreenSaverState ScreenSaver::state() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return state_;
}

void ScreenSaver::SetAppId(const std::string& app_id) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.app_id = app_id;
  }
  events_.Notify([](Observer& observer) { observer.OnScreenSaverChanged(); });
}

bool ScreenSaver::SetTimeout(int seconds) {
  if (seconds < 0) return false;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.timeout_seconds = seconds;
  }
  events_.Notify([](Observer& observer) { observer.OnScreenSaverChanged(); });
  return true;
}

void ScreenSaver::ResetTimeout() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    ++state_.resets;
  }
  events_.Notify([](Observer& observer) { observer.OnScreenSaverChanged(); });
}

void ScreenSaver::Reset() {
  std::lock_guard<std::mutex> lock(mutex_);
  state_ = ScreenSaverState{};
}

}  // namespace tvset
