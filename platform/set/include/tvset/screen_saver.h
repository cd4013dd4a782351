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

// Everything about the screen saver at one moment.
struct ScreenSaverState {
  std::string app_id = "DEFAULT";  // who owns it: the application that it shows, or the set
  int timeout_seconds = 0;         // as it was asked for; 0: the set's own
  uint64_t resets = 0;             // how often an application started its wait afresh
  uint64_t inputs = 0;             // how often a key did
  bool on = false;
  std::chrono::seconds timeout{0};   // the one in force; 0: it never comes on
  std::chrono::nanoseconds idle{0};  // since the last reset or key
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
// the screen saver's coming on, from the thread of the clock's alarm. Any thread.
class TVSET_EXPORT ScreenSaver {
 public:
  // Both are borrowed and outlive the alarms of every clock, as those of a set do.
  ScreenSaver(EventHub& events, const FeatureStore& features);

  ScreenSaverState state() const;
  void SetAppId(const std::string& app_id);  // the owner; any text
  bool SetTimeout(int seconds);              // false: negative
  void ResetTimeout();                       // by an application
  void NoteInput();                          // by the viewer

  // Goes on as the screen saver of an earlier process was: its owner, its time-out, its counts and
  // its time without a reset or a key. Whether it is on follows from these.
  void GoOn(const ScreenSaverState& earlier);

  // By which it waits from now on; the wait starts afresh. Shared. A restart of the set goes back
  // to the steady clock.
  void set_clock(std::shared_ptr<Clock> clock);

 private:
  friend class Set;
  void Start();  // the wait
  void Stop();   // and forgets what was asked

  enum class Cause { kStart, kReset, kInput, kSetting, kAlarm };
  void Update(Cause cause, uint64_t alarm = 0);
  std::chrono::seconds TimeoutLocked() const;
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
  Clock::TimePoint since_;                 // the last reset or input
  std::optional<Clock::TimePoint> alarm_;  // the one that is set
  uint64_t alarms_ = 0;                    // its number; others are ignored
};

}  // namespace tvset
