// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <thread>

#include "posix/unique_fd.h"

namespace orvane::set_process {

// Ends the process when the other side of its socket is gone and it has not ended by itself within
// a time of grace: the thread that would learn of it may be in a handler that never returns.
// Watches from construction to destruction, on a thread of its own. The socket is borrowed.
class EndWatch {
 public:
  EndWatch(int socket, std::chrono::milliseconds grace);
  ~EndWatch();
  EndWatch(const EndWatch&) = delete;
  EndWatch& operator=(const EndWatch&) = delete;

  // As if the other side were gone: the process is about to end.
  void BeginGrace();

 private:
  void Watch();
  bool IsOver();  // else an order to begin the grace is read

  const int socket_;
  const std::chrono::milliseconds grace_;
  base::UniqueFd order_;  // a byte begins the grace, closing it ends the watch
  base::UniqueFd orders_;
  std::thread thread_;
};

}  // namespace orvane::set_process
