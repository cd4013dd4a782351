// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

namespace orvane::extensions {

// The synchronous messages of one instance that wait for their replies. Normally one; more when a
// handler leads to another message, and then a reply answers the innermost.
class SyncCalls {
 public:
  // What became of a reply: only a taken one reaches the page.
  enum class Effect { kTaken, kSecondReply, kNobodyWaits };

  // One message, on the stack of the extension thread, from before its handler runs. Calls end in
  // the reverse order of their beginning.
  class Call {
   public:
    explicit Call(SyncCalls& calls);
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    // The reply, empty when End came before it; nothing when neither came in time. To be called
    // once.
    std::optional<std::string> Wait(std::chrono::milliseconds deadline);

   private:
    friend class SyncCalls;
    SyncCalls& calls_;
    Call* const outer_;
    std::optional<std::string> reply_;  // guarded by calls_.mutex_
  };

  // Any thread. `reply` is copied.
  Effect Reply(const char* reply);

  // Any thread. From now on no call waits.
  void End();

 private:
  std::mutex mutex_;  // guards everything below
  std::condition_variable changed_;
  Call* innermost_ = nullptr;
  bool ended_ = false;
};

}  // namespace orvane::extensions
