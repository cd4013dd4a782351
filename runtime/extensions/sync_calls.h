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
// handler leads to another message, and then a reply answers the innermost: the C interface gives
// replies no number to go by. Part of an InstanceState; the page's side waits on the extension
// thread, replies come from any.
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

    // The reply, empty when End came before it; nothing when neither came in time, counted from
    // now. A reply that came before is taken at once. To be called once, after the handler.
    std::optional<std::string> Wait(std::chrono::milliseconds deadline);

   private:
    friend class SyncCalls;
    SyncCalls& calls_;
    Call* const outer_;
    // Guarded by calls_.mutex_.
    std::optional<std::string> reply_;
  };

  // Any thread. `reply` is copied. One that comes while nobody waits is not kept for the next.
  Effect Reply(const char* reply);

  // Any thread. Every wait ends, and from now on no call waits. A reply that has come still counts.
  void End();

 private:
  std::mutex mutex_;  // guards everything below
  std::condition_variable changed_;
  // Each knows the one around it.
  Call* innermost_ = nullptr;
  bool ended_ = false;
};

}  // namespace orvane::extensions
