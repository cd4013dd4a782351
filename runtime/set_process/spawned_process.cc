// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/spawned_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace orvane::set_process {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr int kChildSocket = 3;
constexpr milliseconds kReapTick{5};
constexpr milliseconds kEndGrace{1000};  // between the end of the socket and of the process

std::pair<base::UniqueFd, base::UniqueFd> MakeSocketPair() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::system_error(errno, std::generic_category(), "socketpair");
  }
  return {base::UniqueFd(ends[0]), base::UniqueFd(ends[1])};
}

std::pair<base::UniqueFd, base::UniqueFd> MakePipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe2");
  }
  return {base::UniqueFd(ends[0]), base::UniqueFd(ends[1])};
}

}  // namespace

SpawnedProcess::SpawnedProcess(asio::io_context& loop, const std::vector<std::string>& command,
                               Receiver receiver)
    : receiver_(std::move(receiver)), timer_(loop) {
  auto [server_end, child_end] = MakeSocketPair();
  auto [read_end, write_end] = MakePipe();
  child_ = std::make_unique<base::ChildProcess>(
      command, base::ChildProcess::Descriptors{
                   {write_end.get(), 1}, {write_end.get(), 2}, {child_end.get(), kChildSocket}});
  tail_ = std::make_shared<StderrTail>(loop, std::move(read_end));
  channel_ = std::make_shared<FrameChannel>(
      loop, std::move(server_end),
      FrameChannel::Receiver{[this](const base::Frame& frame) { receiver_.on_frame(frame); },
                             [this] { EndWithin(kEndGrace); }});
}

SpawnedProcess::~SpawnedProcess() { channel_->Close(); }

void SpawnedProcess::Listen() {
  tail_->Start();
  channel_->Start();
}

void SpawnedProcess::EndWithin(milliseconds time) { Reap(steady_clock::now() + time); }

void SpawnedProcess::Kill() { child_->Signal(SIGKILL); }

// Waits for the process without blocking the loop.
void SpawnedProcess::Reap(TimePoint kill_at) {
  const auto self = shared_from_this();  // its owner may let go of it when it has ended
  if (const auto end = child_->end()) return receiver_.on_end(*end, tail_->Finish());
  if (steady_clock::now() >= kill_at) Kill();
  timer_.expires_after(kReapTick);
  timer_.async_wait([weak = weak_from_this(), kill_at](beast::error_code error) {
    const auto child = weak.lock();
    if (!error && child) child->Reap(kill_at);
  });
}

}  // namespace orvane::set_process
