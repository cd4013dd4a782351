// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <memory>
#include <string>

#include "base/net.h"
#include "posix/unique_fd.h"

namespace orvane::set_process {

// Reads what a child writes to its standard streams, keeps the end of it for a report, and passes
// all of it on to this process's standard error stream. The loop's thread only.
class StderrTail : public std::enable_shared_from_this<StderrTail> {
 public:
  static constexpr size_t kMaxBytes = size_t{64} << 10U;

  StderrTail(asio::io_context& loop, base::UniqueFd pipe);

  void Start();
  // Reads what is there already, and no more from now on. Returns the last kMaxBytes.
  std::string Finish();

 private:
  void Read();
  void Take(size_t count);

  asio::posix::stream_descriptor pipe_;
  std::array<char, 4096> buffer_{};
  std::string text_;
};

}  // namespace orvane::set_process
