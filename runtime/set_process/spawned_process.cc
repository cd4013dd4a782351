// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/spawned_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "base/utf8.h"

namespace orvane::set_process {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr int kChildSocket = 3;
constexpr int kChildMemory = 4;
constexpr size_t kReadBytes = size_t{64} << 10U;
constexpr size_t kKeptOutputBytes = size_t{64} << 10U;
constexpr milliseconds kReapTick{5};
constexpr milliseconds kEndGrace{1000};  // between the end of the socket and of the process

using Ends = std::pair<base::UniqueFd, base::UniqueFd>;

Ends Own(const int (&ends)[2], int result, const char* call) {
  if (result != 0) throw std::system_error(errno, std::generic_category(), call);
  return {base::UniqueFd(ends[0]), base::UniqueFd(ends[1])};
}

Ends MakeSocketPair() {
  int ends[2] = {-1, -1};
  const int result = socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
  return Own(ends, result, "socketpair");
}

Ends MakePipe() {
  int ends[2] = {-1, -1};
  const int result = pipe2(ends, O_CLOEXEC);
  return Own(ends, result, "pipe2");
}

std::vector<std::string> WithDescriptors(std::vector<std::string> command) {
  command.push_back("--fd=" + std::to_string(kChildSocket));
  command.push_back("--memory=" + std::to_string(kChildMemory));
  return command;
}

}  // namespace

SpawnedProcess::SpawnedProcess(asio::io_context& loop, const std::vector<std::string>& command,
                               int memory, Receiver receiver)
    : SpawnedProcess(loop, command, memory, std::move(receiver), MakeSocketPair(), MakePipe()) {}

// The process's ends are closed on this side when it has them.
SpawnedProcess::SpawnedProcess(asio::io_context& loop, const std::vector<std::string>& command,
                               int memory, Receiver receiver, Ends socket, Ends output)
    : receiver_(std::move(receiver)),
      child_(std::make_unique<base::ChildProcess>(
          WithDescriptors(command),
          base::ChildProcess::Descriptors{{output.second.get(), 1},
                                          {output.second.get(), 2},
                                          {socket.second.get(), kChildSocket},
                                          {memory, kChildMemory}})),
      socket_(loop, asio::local::stream_protocol(), socket.first.Release()),
      output_(loop, output.first.Release()),
      timer_(loop),
      incoming_(kReadBytes) {
  output_.non_blocking(true);
}

void SpawnedProcess::Listen() {
  ReadOutput();
  ReadFrames();
}

void SpawnedProcess::Send(std::string_view frames) {
  if (is_closed_ || frames.empty()) return;
  waiting_.append(frames);
  if (writing_.empty()) Write();
}

void SpawnedProcess::Write() {
  writing_.clear();
  std::swap(writing_, waiting_);
  // The usual case, without a turn of the loop: the socket takes it all.
  const ssize_t count =
      send(socket_.native_handle(), writing_.data(), writing_.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  const size_t sent = count > 0 ? static_cast<size_t>(count) : 0;
  if (sent == writing_.size()) return writing_.clear();
  asio::async_write(socket_, asio::buffer(writing_) + sent,
                    [weak = weak_from_this()](beast::error_code error, size_t) {
                      const auto self = weak.lock();
                      if (error || !self || self->is_closed_) return;
                      self->writing_.clear();
                      if (!self->waiting_.empty()) self->Write();
                    });
}

void SpawnedProcess::ReadFrames() {
  socket_.async_read_some(asio::buffer(incoming_),
                          [weak = weak_from_this()](beast::error_code error, size_t count) {
                            const auto self = weak.lock();
                            if (!self || self->is_closed_) return;
                            if (error) return self->EndWithin(kEndGrace);
                            self->reader_.Append({self->incoming_.data(), count});
                            self->TakeFrames();
                          });
}

void SpawnedProcess::TakeFrames() {
  while (!is_closed_) {
    std::optional<base::Frame> frame;
    try {
      frame = reader_.Next();
    } catch (const std::runtime_error&) {
      return EndWithin(kEndGrace);  // an extension has written into the socket
    }
    if (!frame) return ReadFrames();
    receiver_.on_frame(*frame);
  }
}

void SpawnedProcess::ReadOutput() {
  output_.async_read_some(asio::buffer(outgoing_),
                          [weak = weak_from_this()](beast::error_code error, size_t count) {
                            const auto self = weak.lock();
                            if (error || !self) return;
                            self->TakeOutput(count);
                            self->ReadOutput();
                          });
}

void SpawnedProcess::TakeOutput(size_t count) {
  std::fwrite(outgoing_.data(), 1, count, stderr);
  text_.append(outgoing_.data(), count);
  if (text_.size() > 2 * kKeptOutputBytes) text_.erase(0, text_.size() - kKeptOutputBytes);
}

std::string SpawnedProcess::FinishOutput() {
  beast::error_code error;
  while (!error) TakeOutput(output_.read_some(asio::buffer(outgoing_), error));
  output_.close(error);
  if (text_.size() > kKeptOutputBytes) text_.erase(0, text_.size() - kKeptOutputBytes);
  return base::WellFormedUtf8(text_);
}

void SpawnedProcess::EndWithin(milliseconds time) { Reap(steady_clock::now() + time); }

void SpawnedProcess::Kill() { child_->Signal(SIGKILL); }

void SpawnedProcess::Forget() {
  is_closed_ = true;
  timer_.cancel();
  Kill();
}

// Waits for the process without blocking the loop.
void SpawnedProcess::Reap(TimePoint kill_at) {
  if (const auto end = child_->end()) {
    is_closed_ = true;
    return receiver_.on_end(*end, FinishOutput());
  }
  if (steady_clock::now() >= kill_at) Kill();
  timer_.expires_after(kReapTick);
  timer_.async_wait([weak = weak_from_this(), kill_at](beast::error_code error) {
    const auto self = weak.lock();
    if (!error && self && !self->is_closed_) self->Reap(kill_at);
  });
}

}  // namespace orvane::set_process
