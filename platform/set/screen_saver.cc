// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/screen_saver.h"

#include <charconv>
#include <utility>

#include "tvset/features.h"
#include "tvset/profile_keys.h"

namespace tvset {
namespace {

constexpr std::chrono::seconds kOwnTimeout = std::chrono::minutes(5);

}  // namespace

ScreenSaver::ScreenSaver(EventHub& events, const FeatureStore& features)
    : events_(events), features_(features), clock_(Clock::Steady()) {}

ScreenSaverState ScreenSaver::state() const {
  std::lock_guard<std::mutex> lock(mutex_);
  ScreenSaverState state = state_;
  state.timeout = TimeoutLocked();
  if (running_) state.idle = clock_->Now() - since_;
  return state;
}

void ScreenSaver::SetAppId(const std::string& app_id) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.app_id = app_id;
  }
  Update(Cause::kSetting);
}

bool ScreenSaver::SetTimeout(int seconds) {
  if (seconds < 0) return false;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.timeout_seconds = seconds;
  }
  Update(Cause::kSetting);
  return true;
}

void ScreenSaver::ResetTimeout() { Update(Cause::kReset); }

void ScreenSaver::NoteInput() { Update(Cause::kInput); }

void ScreenSaver::GoOn(const ScreenSaverState& earlier) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.app_id = earlier.app_id;
    state_.timeout_seconds = earlier.timeout_seconds;
    state_.resets = earlier.resets;
    state_.inputs = earlier.inputs;
    state_.on = false;
    since_ = clock_->Now() - earlier.idle;
    alarm_.reset();  // it may be for a later time than this one needs
  }
  Update(Cause::kSetting);
}

void ScreenSaver::set_clock(std::shared_ptr<Clock> clock) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    clock_ = std::move(clock);
    alarm_.reset();
  }
  Update(Cause::kStart);
}

void ScreenSaver::Start() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    running_ = true;
  }
  Update(Cause::kStart);
}

void ScreenSaver::Stop() {
  std::lock_guard<std::mutex> lock(mutex_);
  running_ = false;
  clock_ = Clock::Steady();
  state_ = ScreenSaverState{};
  alarm_.reset();
  ++alarms_;
}

void ScreenSaver::Update(Cause cause, uint64_t alarm) {
  bool turned = false;
  bool on = false;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (cause == Cause::kAlarm && alarm != alarms_) return;
    turned = SettleLocked(cause);
    on = state_.on;
  }
  const bool asked = cause == Cause::kReset || cause == Cause::kSetting;
  if (asked || turned) {
    events_.Notify([](Observer& observer) { observer.OnScreenSaverChanged(); });
  }
  if (!turned) return;
  events_.Notify([on](Observer& observer) {
    if (on) {
      observer.OnScreenSaverOn();
    } else {
      observer.OnScreenSaverOff();
    }
  });
}

// A reset only moves the time at which the screen saver is due: the alarm that is set rings in the
// meantime and is set again, so that a reset costs no alarm.
bool ScreenSaver::SettleLocked(Cause cause) {
  if (cause == Cause::kReset) ++state_.resets;
  if (cause == Cause::kInput) ++state_.inputs;
  if (cause == Cause::kAlarm) alarm_.reset();
  const bool was_on = state_.on;
  const Clock::TimePoint now = clock_->Now();
  if (cause != Cause::kSetting && cause != Cause::kAlarm) {
    since_ = now;
    state_.on = false;
  }
  const std::chrono::seconds timeout = TimeoutLocked();
  if (!running_ || state_.on || timeout.count() == 0) return was_on != state_.on;
  state_.on = now - since_ >= timeout;
  if (!state_.on) SetAlarmLocked(since_ + timeout);
  return was_on != state_.on;
}

void ScreenSaver::SetAlarmLocked(Clock::TimePoint when) {
  if (alarm_ && *alarm_ <= when) return;
  alarm_ = when;
  clock_->SetAlarm(when, [this, number = ++alarms_] { Update(Cause::kAlarm, number); });
}

std::chrono::seconds ScreenSaver::TimeoutLocked() const {
  if (state_.timeout_seconds != 0) return std::chrono::seconds(state_.timeout_seconds);
  const std::optional<std::string> own =
      features_.Find(kScreenSaverKey, "int", FeatureGroup::kCustom);
  if (!own) return kOwnTimeout;
  int seconds = 0;
  std::from_chars(own->data(), own->data() + own->size(), seconds);
  return std::chrono::seconds(seconds > 0 ? seconds : 0);
}

}  // namespace tvset
