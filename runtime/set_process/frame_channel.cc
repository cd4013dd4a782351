// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/frame_channel.h"

#include <sys/socket.h>

#include <utility>

namespace orvane::set_process {

namespace {

constexpr size_t kReadBytes = size_t{64} << 10U;

}  // namespace

FrameChannel::FrameChannel(asio::io_context& loop, base::UniqueFd socket, Receiver receiver)
    : socket_(loop, asio::local::stream_protocol(), socket.Release()),
      receiver_(std::move(receiver)),
      incoming_(kReadBytes) {}

void FrameChannel::Start() { Read(); }

void FrameChannel::Send(std::string_view frames) {
  if (closed_) return;
  waiting_.append(frames);
  if (writing_.empty()) Write();
}

void FrameChannel::Write() {
  writing_.clear();
  std::swap(writing_, waiting_);
  // The usual case, without a turn of the loop: the socket takes it all.
  const ssize_t count =
      send(socket_.native_handle(), writing_.data(), writing_.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  const size_t sent = count > 0 ? static_cast<size_t>(count) : 0;
  if (sent == writing_.size()) return writing_.clear();
  asio::async_write(socket_, asio::buffer(writing_) + sent,
                    [self = shared_from_this()](beast::error_code error, size_t) {
                      self->writing_.clear();
                      if (!error && !self->closed_ && !self->waiting_.empty()) self->Write();
                    });
}

void FrameChannel::Read() {
  socket_.async_read_some(asio::buffer(incoming_),
                          [self = shared_from_this()](beast::error_code error, size_t count) {
                            if (self->closed_) return;
                            if (error) return self->End();
                            self->OnRead(count);
                          });
}

void FrameChannel::OnRead(size_t count) {
  reader_.Append({incoming_.data(), count});
  while (!closed_) {
    std::optional<base::Frame> frame;
    try {
      frame = reader_.Next();
    } catch (const std::runtime_error&) {
      return End();  // not the process that was started
    }
    if (!frame) break;
    receiver_.on_frame(*frame);
  }
  if (!closed_) Read();
}

void FrameChannel::End() {
  Close();
  receiver_.on_closed();
}

void FrameChannel::Close() {
  closed_ = true;
  beast::error_code ignored;
  socket_.close(ignored);
}

}  // namespace orvane::set_process
