// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/frame.h"
#include "base/net.h"
#include "posix/unique_fd.h"

namespace orvane::set_process {

// The server's end of the socket to the set process. The loop's thread only.
class FrameChannel : public std::enable_shared_from_this<FrameChannel> {
 public:
  struct Receiver {
    std::function<void(const base::Frame& frame)> on_frame;
    std::function<void()> on_closed;  // once, after the last frame
  };

  FrameChannel(asio::io_context& loop, base::UniqueFd socket, Receiver receiver);

  void Start();
  // Whole frames, written at once as far as the socket takes them.
  void Send(std::string_view frames);
  size_t queued_bytes() const { return waiting_.size() + writing_.size(); }  // not written yet
  // Nothing is received from now on.
  void Close();

 private:
  void Read();
  void OnRead(size_t count);
  void Write();
  void End();

  asio::local::stream_protocol::socket socket_;
  Receiver receiver_;
  base::FrameReader reader_;
  std::vector<char> incoming_;
  std::string waiting_;  // frames for the next write
  std::string writing_;  // what is being written
  bool closed_ = false;
};

}  // namespace orvane::set_process
