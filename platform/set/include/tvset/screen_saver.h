// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "tvset/clock.h"
#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

class FeatureStore;

// Everything about the screen saver at one moment. Also what an earlier process knew of it, for
// ScreenSaver::GoOn.
struct ScreenSaverState {
  // Who owns it: the application that it shows, or the set.
  std::string app_id = "DEFAULT";
  // As it was asked for; 0: the set's own.
  int timeout_seconds = 0;
  // How often an application started its wait afresh.
  uint64_t resets = 0;
  // How often a key did.
  uint64_t inputs = 0;
  bool on = false;
  // The one in force; 0: it never comes on.
  std::chrono::seconds timeout{0};
  // Since the last reset or key.
  std::chrono::nanoseconds idle{0};
};

// The television's screen saver: it comes on when neither an application nor a key started its wait
// afresh for as long as the time-out says, and goes with the next reset or key. The key reaches its
// application all the same.
//
// Its owner and its time-out outlive the application that set them, and one does not change with
// the other. The owner "DEFAULT" is the set, which then shows its own screen saver. The time-out 0
// is the set's own: that of the profile's key kScreenSaverKey, else five minutes. Setting them does
// not start the wait afresh: a time-out that has passed already brings the screen saver on at once.
//
// Partner of the platform's screensaver functions, of KeyGrabs, which notes the viewer's keys, and
// of a Clock. Observers hear of every change (OnScreenSaverChanged) on the thread that made it; of
// the screen saver's coming on, from the thread of the clock's alarm. Owned by Set. Any thread.
class TVSET_EXPORT ScreenSaver {
 public:
  // Both are borrowed and outlive the alarms of every clock, as those of a set do.
  ScreenSaver(EventHub& events, const FeatureStore& features);

  // All of it as it is at one moment, by the clock.
  ScreenSaverState state() const;
  // The owner; any text.
  void SetAppId(const std::string& app_id);
  // False: negative.
  bool SetTimeout(int seconds);
  // By an application.
  void ResetTimeout();
  // By the viewer.
  void NoteInput();

  // Goes on as the screen saver of an earlier process was: its owner, its time-out, its counts and
  // its time without a reset or a key. Whether it is on follows from these.
  void GoOn(const ScreenSaverState& earlier);

  // By which it waits from now on; the wait starts afresh. Shared. A restart of the set goes back
  // to the steady clock.
  void set_clock(std::shared_ptr<Clock> clock);

 private:
  friend class Set;
  // Begins the wait, as the set starts.
  void Start();
  // Ends it, and forgets what was asked.
  void Stop();

  enum class Cause { kStart, kReset, kInput, kSetting, kAlarm };
  // The frame of all changes: settles, and tells the observers with no lock held. `alarm` is the
  // number of the one that rang.
  void Update(Cause cause, uint64_t alarm = 0);
  // The one in force.
  std::chrono::seconds TimeoutLocked() const;
  // Unless one is set that rings no later.
  void SetAlarmLocked(Clock::TimePoint when);
  // Whether it came on or went.
  bool SettleLocked(Cause cause);

  EventHub& events_;
  const FeatureStore& features_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  std::shared_ptr<Clock> clock_;
  ScreenSaverState state_;
  bool running_ = false;
  // The last reset or input.
  Clock::TimePoint since_;
  // The one that is set.
  std::optional<Clock::TimePoint> alarm_;
  // Its number; others are ignored.
  uint64_t alarms_ = 0;
};

}  // namespace tvset
