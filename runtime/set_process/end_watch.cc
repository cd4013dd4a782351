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

#include "posix/write_all.h"

namespace orvane::set_process {

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
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::system_category(), "pipe2");
  orders_ = base::UniqueFd(ends[0]);
  order_ = base::UniqueFd(ends[1]);
  thread_ = std::thread([this] { Watch(); });
}

EndWatch::~EndWatch() {
  order_.Reset();
  thread_.join();
}

void EndWatch::BeginGrace() { base::WriteAll(order_.get(), "."); }

void EndWatch::Watch() {
  pthread_setname_np(pthread_self(), "end-watch");
  pollfd descriptors[] = {{orders_.get(), POLLIN, 0}, {socket_, POLLRDHUP, 0}};
  Poll(descriptors, 2, -1);
  if (descriptors[0].revents != 0 && IsOver()) return;
  // From here on only the end of the process counts.
  const Clock::time_point end = Clock::now() + grace_;
  while (Clock::now() < end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (Poll(descriptors, 1, static_cast<int>(left.count())) > 0 && IsOver()) return;
  }
  std::fputs("orvane: the set process was ended while a handler was still busy.\n", stderr);
  _exit(EXIT_FAILURE);
}

bool EndWatch::IsOver() {
  char order = 0;
  return read(orders_.get(), &order, sizeof(order)) != sizeof(order);
}

}  // namespace orvane::set_process
