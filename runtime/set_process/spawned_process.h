// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/child_process.h"
#include "base/net.h"
#include "set_process/frame_channel.h"
#include "set_process/stderr_tail.h"

namespace orvane::set_process {

// One run of the set process: the process itself, the socket to it, and what it writes. The
// loop's thread only.
class SpawnedProcess : public std::enable_shared_from_this<SpawnedProcess> {
 public:
  struct Receiver {
    std::function<void(const base::Frame& frame)> on_frame;
    // Once, when the process is gone; `output` is the end of what it wrote. Nothing comes after it.
    std::function<void(const base::ProcessEnd& end, const std::string& output)> on_end;
  };

  // Starts it; its socket is descriptor 3. Throws std::system_error. Borrows the loop.
  SpawnedProcess(asio::io_context& loop, const std::vector<std::string>& command,
                 Receiver receiver);
  ~SpawnedProcess();  // ends it
  SpawnedProcess(const SpawnedProcess&) = delete;
  SpawnedProcess& operator=(const SpawnedProcess&) = delete;

  void Listen();  // once, from when frames are received
  void Send(std::string_view frames) { channel_->Send(frames); }
  size_t queued_bytes() const { return channel_->queued_bytes(); }
  // It has that long to end by itself.
  void EndWithin(std::chrono::milliseconds time);
  void Kill();

  pid_t pid() const { return child_->pid(); }

 private:
  using TimePoint = std::chrono::steady_clock::time_point;

  void Reap(TimePoint kill_at);

  const Receiver receiver_;
  std::unique_ptr<base::ChildProcess> child_;
  std::shared_ptr<StderrTail> tail_;
  std::shared_ptr<FrameChannel> channel_;
  asio::steady_timer timer_;
};

}  // namespace orvane::set_process
