// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/child_process.h"
#include "base/frame.h"
#include "base/net.h"
#include "posix/unique_fd.h"

namespace orvane::set_process {

// One run of the set process: the process itself, the frames to and from it, and what it writes to
// its standard streams, which goes on to this process's standard error stream. Belongs to
// SetProcess, which calls Forget before it lets go of it. The loop's thread only.
class SpawnedProcess : public std::enable_shared_from_this<SpawnedProcess> {
 public:
  struct Receiver {
    std::function<void(const base::Frame& frame)> on_frame;
    // Once, when the process is gone, after its last frame; `output` is the end of what it wrote.
    std::function<void(const base::ProcessEnd& end, const std::string& output)> on_end;
  };

  // Starts it with two more arguments, the descriptors that it has of its socket and of `memory`.
  // Throws std::system_error. Borrows the loop; the memory for the call.
  SpawnedProcess(asio::io_context& loop, const std::vector<std::string>& command, int memory,
                 Receiver receiver);
  // Kills the process if it runs.
  ~SpawnedProcess() = default;
  SpawnedProcess(const SpawnedProcess&) = delete;
  SpawnedProcess& operator=(const SpawnedProcess&) = delete;

  void Listen();  // once, from when frames are received
  // Whole frames, written at once as far as the socket takes them.
  void Send(std::string_view frames);
  size_t queued_bytes() const { return waiting_.size() + writing_.size(); }  // not written yet
  // It has that long to end by itself.
  void EndWithin(std::chrono::milliseconds time);
  void Kill();
  // Kills it, and calls the receiver no more.
  void Forget();

  pid_t pid() const { return child_->pid(); }

 private:
  using TimePoint = std::chrono::steady_clock::time_point;
  using Ends = std::pair<base::UniqueFd, base::UniqueFd>;  // this side's, the process's

  SpawnedProcess(asio::io_context& loop, const std::vector<std::string>& command, int memory,
                 Receiver receiver, Ends socket, Ends output);

  void ReadFrames();
  void TakeFrames();
  void Write();
  void ReadOutput();
  void TakeOutput(size_t count);
  std::string FinishOutput();
  void Reap(TimePoint kill_at);

  const Receiver receiver_;
  const std::unique_ptr<base::ChildProcess> child_;
  asio::local::stream_protocol::socket socket_;
  asio::posix::stream_descriptor output_;
  asio::steady_timer timer_;
  base::FrameReader reader_;
  std::vector<char> incoming_;
  std::string waiting_;  // frames for the next write
  std::string writing_;  // what is being written
  std::array<char, 4096> outgoing_{};
  std::string text_;  // the end of what it wrote
  bool is_closed_ = false;
};

}  // namespace orvane::set_process
