// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace orvane::extensions {

// Lets calls into something until it goes away. Whoever calls passes the gate first; whoever takes
// the thing away closes the gate, and knows when Close returned that no other thread is inside.
// Passing costs two atomic operations and takes no lock.
//
// Part of what it guards: a HostContext has one before the functions of its HostOptions, an
// InstanceState one before its InstanceClient. Whoever passes keeps that owner alive meanwhile.
// Thread-safe. A gate stays closed.
class CallGate {
 public:
  // One call through the gate, on the stack of the calling thread. A thread may hold several, of
  // one gate or of many; they end in the reverse order of their beginning.
  class Pass {
   public:
    // Does not wait, not even for a Close that does.
    explicit Pass(CallGate& gate);
    ~Pass();
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    // False: the gate is closed, stay out.
    explicit operator bool() const { return open_; }

   private:
    friend class CallGate;
    CallGate& gate_;
    const bool open_;
    // The calling thread's passes of all gates, innermost first.
    Pass* const outer_;
  };

  // Waits for the passes of other threads. Those of the calling thread itself, which can only end
  // after this returned, are not waited for. Closing twice is harmless.
  void Close();

 private:
  static constexpr uint32_t kClosed = 1u << 31;

  // Counts a pass. False, and not counted: the gate is closed.
  bool Enter();
  // Wakes a Close that waits.
  void Leave();
  // Open ones of this gate.
  uint32_t PassesOfThisThread() const;

  static inline thread_local Pass* innermost_ = nullptr;

  // kClosed and the number of passes, those included that were refused and are about to leave.
  std::atomic<uint32_t> state_{0};
  // Held to wait and to wake, never to pass.
  std::mutex mutex_;
  std::condition_variable left_;
};

}  // namespace orvane::extensions
