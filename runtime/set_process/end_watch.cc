// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/end_watch.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

namespace orvane::set_process {

enum class EndWatch::Order : unsigned char { kBeginGrace, kStop };

namespace {

using Clock = std::chrono::steady_clock;

int Poll(pollfd* descriptors, nfds_t count, int timeout_ms) {
  int ready = 0;
  do {
    ready = poll(descriptors, count, timeout_ms);
  } while (ready < 0 && errno == EINTR);
  return ready;
}

}  // namespace

EndWatch::EndWatch(int socket, std::chrono::milliseconds grace) : socket_(socket), grace_(grace) {
  if (pipe2(pipe_, O_CLOEXEC) != 0) throw std::system_error(errno, std::system_category(), "pipe2");
  thread_ = std::thread([this] { Watch(); });
}

EndWatch::~EndWatch() {
  Tell(Order::kStop);
  thread_.join();
  close(pipe_[0]);
  close(pipe_[1]);
}

void EndWatch::BeginGrace() { Tell(Order::kBeginGrace); }

void EndWatch::Tell(Order order) {
  while (write(pipe_[1], &order, sizeof(order)) < 0 && errno == EINTR) {
  }
}

void EndWatch::Watch() {
  pthread_setname_np(pthread_self(), "end-watch");
  pollfd descriptors[] = {{pipe_[0], POLLIN, 0}, {socket_, POLLRDHUP, 0}};
  Poll(descriptors, 2, -1);
  if ((descriptors[0].revents & POLLIN) != 0) {
    Order order = Order::kStop;
    if (read(pipe_[0], &order, sizeof(order)) != 1 || order == Order::kStop) return;
  }
  // From here on only the end of the process counts.
  const Clock::time_point end = Clock::now() + grace_;
  while (Clock::now() < end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (Poll(descriptors, 1, static_cast<int>(left.count())) <= 0) continue;
    Order order = Order::kStop;
    if (read(pipe_[0], &order, sizeof(order)) != 1 || order == Order::kStop) return;
  }
  std::fputs("orvane: the set process was ended while a handler was still busy.\n", stderr);
  _exit(EXIT_FAILURE);
}

}  // namespace orvane::set_process
