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
class CallGate {
 public:
  // One call through the gate, on the stack of the calling thread.
  class Pass {
   public:
    explicit Pass(CallGate& gate);
    ~Pass();
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    explicit operator bool() const { return open_; }  // false: the gate is closed, stay out

   private:
    friend class CallGate;
    CallGate& gate_;
    const bool open_;
    Pass* const outer_;  // the calling thread's passes, innermost first
  };

  // Waits for the passes of other threads. Those of the calling thread itself, which can only end
  // after this returned, are not waited for. Closing twice is harmless.
  void Close();

 private:
  static constexpr uint32_t kClosed = 1u << 31;

  bool Enter();
  void Leave();
  uint32_t PassesOfThisThread() const;

  static inline thread_local Pass* innermost_ = nullptr;

  std::atomic<uint32_t> state_{0};  // kClosed and the number of passes
  std::mutex mutex_;
  std::condition_variable left_;
};

}  // namespace orvane::extensions
