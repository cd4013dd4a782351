// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/stderr_tail.h"

#include <cstdio>

#include "base/utf8.h"

namespace orvane::set_process {

StderrTail::StderrTail(asio::io_context& loop, base::UniqueFd pipe) : pipe_(loop, pipe.Release()) {
  pipe_.non_blocking(true);
}

void StderrTail::Start() { Read(); }

std::string StderrTail::Finish() {
  beast::error_code error;
  while (!error) Take(pipe_.read_some(asio::buffer(buffer_), error));
  pipe_.close(error);
  if (text_.size() > kMaxBytes) text_.erase(0, text_.size() - kMaxBytes);
  return base::WellFormedUtf8(text_);
}

void StderrTail::Read() {
  pipe_.async_read_some(asio::buffer(buffer_),
                        [self = shared_from_this()](beast::error_code error, size_t count) {
                          if (error) return;
                          self->Take(count);
                          self->Read();
                        });
}

void StderrTail::Take(size_t count) {
  std::fwrite(buffer_.data(), 1, count, stderr);
  text_.append(buffer_.data(), count);
  if (text_.size() > 2 * kMaxBytes) text_.erase(0, text_.size() - kMaxBytes);
}

}  // namespace orvane::set_process
