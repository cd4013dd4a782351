// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvane::base {

// What the server process and the set process send each other over a stream socket: frames of
// a length, four bytes with the lowest first, and a body of so many bytes, which is JSON.

inline constexpr size_t kHeaderBytes = 4;
inline constexpr size_t kMaxBodyBytes = size_t{16} << 20;

// A body that is too long. When reading, the stream has lost its frames and cannot be used further.
class FrameError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Appends a whole frame. Throws FrameError for a body above kMaxBodyBytes; `bytes` is then as it
// was.
void AppendFrame(std::string_view body, std::string* bytes);

// Takes frames out of a stream of bytes, however it is cut. No thread of its own, no descriptor:
// whoever reads the socket gives it what came.
class FrameReader {
 public:
  void Append(std::string_view bytes);

  // The next body; empty when none is whole yet. Valid until the next call of a member that is not
  // const. Throws FrameError when the stream announces a body above kMaxBodyBytes.
  std::optional<std::string_view> Next();

  size_t buffered() const { return bytes_.size() - taken_; }  // bytes not taken yet

 private:
  std::string bytes_;
  size_t taken_ = 0;  // bytes of whole frames at the beginning that were given out
};

// For a side that blocks. Both go on after a signal, and neither raises SIGPIPE.

// Reads until a frame is whole, which may be at once. Empty when the other side has closed or the
// socket failed. Throws as FrameReader::Next.
std::optional<std::string_view> ReceiveFrame(int socket, FrameReader* reader);

// Writes a whole frame, or several that AppendFrame made. False when the other side has closed.
bool SendBytes(int socket, std::string_view bytes);

}  // namespace orvane::base
