// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/json.h"

namespace orvane::base {

// What the server and the set process send each other over a stream socket: frames of a length,
// which is that of all that follows, the head's length, the head and the body. The lengths are four
// bytes each, the lowest first. The head is a JSON object that this system's own code made; what
// pages and extensions wrote travels as the body, as it is.
struct Frame {
  Json head;
  std::string_view body;  // borrowed
};

inline constexpr size_t kMaxFrameBytes = size_t{16} << 20;  // after the first length

// A frame that is too long, or bytes that are no frame. When reading, the stream has lost its
// frames and cannot be used further.
class FrameError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Appends a whole frame; `head` is the text of a JSON object. Throws FrameError for one above
// kMaxFrameBytes; `bytes` is then as it was.
void AppendFrame(std::string_view head, std::string_view body, std::string* bytes);

// Takes frames out of a stream of bytes, however it is cut. No thread of its own, no descriptor:
// whoever reads the socket gives it what came.
class FrameReader {
 public:
  void Append(std::string_view bytes);

  // The next frame; empty when none is whole yet. Its body is valid until the next call of a member
  // that is not const. Throws FrameError, or JsonError for one frame whose head is no JSON object:
  // the next call goes on with the frame after it.
  std::optional<Frame> Next();

  size_t buffered() const { return bytes_.size() - taken_; }  // bytes not taken yet

 private:
  std::string bytes_;
  size_t taken_ = 0;  // bytes of whole frames at the beginning that were given out
};

// For a side that blocks. Both go on after a signal, and neither raises SIGPIPE.

// Reads until a frame is whole, which may be at once. Empty when the other side has closed or the
// socket failed. Throws as FrameReader::Next.
std::optional<Frame> ReceiveFrame(int socket, FrameReader* reader);

// Writes a whole frame, or several that AppendFrame made. False when the other side has closed.
bool SendBytes(int socket, std::string_view bytes);

}  // namespace orvane::base
