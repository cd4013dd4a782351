// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

struct ScreenSaverState {
  std::string app_id = "DEFAULT";  // the application that it shows; "DEFAULT": the set's own
  int timeout_seconds = 0;         // 0: the set's own default
  uint64_t resets = 0;             // how often its wait was started afresh
};

// What was asked of the television's screen saver. Any thread.
class TVSET_EXPORT ScreenSaver {
 public:
  explicit ScreenSaver(EventHub& events);

  ScreenSaverState state() const;
  void SetAppId(const std::string& app_id);
  bool SetTimeout(int seconds);  // false: negative
  void ResetTimeout();
  void Reset();

 private:
  EventHub& events_;
  mutable std::mutex mutex_;
  ScreenSaverState state_;  // guarded by mutex_
};

}  // namespace tvset
