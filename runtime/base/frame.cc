// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/frame.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace orvane::base {

namespace {

constexpr size_t kReadBytes = size_t{64} << 10;
constexpr size_t kLengthBytes = 4;
// What was read from others nests less deep: it is a member of the head.
constexpr int kMaxHeadDepth = kMaxJsonDepth + 16;

void CheckLength(size_t length) {
  if (length <= kMaxFrameBytes) return;
  throw FrameError("a frame of " + std::to_string(length) + " bytes is longer than the limit of " +
                   std::to_string(kMaxFrameBytes) + "; send less at a time");
}

void AppendLength(size_t length, std::string* bytes) {
  for (size_t i = 0; i < kLengthBytes; ++i, length >>= 8) {
    bytes->push_back(static_cast<char>(length & 0xffU));
  }
}

// Takes it off the beginning.
size_t TakeLength(std::string_view* bytes) {
  uint32_t length = 0;
  for (size_t i = kLengthBytes; i > 0; --i) {
    length = length << 8 | static_cast<unsigned char>((*bytes)[i - 1]);
  }
  bytes->remove_prefix(kLengthBytes);
  return length;
}

}  // namespace

void AppendFrame(std::string_view head, std::string_view body, std::string* bytes) {
  const size_t length = kLengthBytes + head.size() + body.size();
  CheckLength(length);
  bytes->reserve(bytes->size() + kLengthBytes + length);
  AppendLength(length, bytes);
  AppendLength(head.size(), bytes);
  bytes->append(head).append(body);
}

void FrameReader::Append(std::string_view bytes) {
  // What was taken goes when nothing else is left, or when it is the greater part: no byte is moved
  // more than once for each that is read.
  if (taken_ == bytes_.size() || taken_ > bytes_.size() / 2) {
    bytes_.erase(0, taken_);
    taken_ = 0;
  }
  bytes_.append(bytes);
}

std::optional<Frame> FrameReader::Next() {
  std::string_view left = bytes_;
  left.remove_prefix(taken_);
  if (left.size() < kLengthBytes) return std::nullopt;
  const size_t length = TakeLength(&left);
  CheckLength(length);
  if (left.size() < length) return std::nullopt;
  taken_ += kLengthBytes + length;
  left = left.substr(0, length);
  const size_t head_length = length < kLengthBytes ? length : TakeLength(&left);
  if (head_length > left.size() || length < kLengthBytes) {
    throw FrameError("a frame of " + std::to_string(length) + " bytes has no room for its head");
  }
  Json head = ParseJson(left.substr(0, head_length), kMaxHeadDepth);
  if (!head.is_object()) throw JsonError("The head of a frame is no JSON object.");
  return Frame{std::move(head), left.substr(head_length)};
}

std::optional<Frame> ReceiveFrame(int socket, FrameReader* reader) {
  while (true) {
    if (auto frame = reader->Next()) return frame;
    std::array<char, kReadBytes> bytes;  // NOLINT(cppcoreguidelines-pro-type-member-init): recv's
    const ssize_t count = recv(socket, bytes.data(), bytes.size(), 0);
    if (count > 0) reader->Append({bytes.data(), static_cast<size_t>(count)});
    if (count == 0 || (count < 0 && errno != EINTR)) return std::nullopt;
  }
}

bool SendBytes(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count >= 0) bytes.remove_prefix(static_cast<size_t>(count));
    if (count < 0 && errno != EINTR) return false;
  }
  return true;
}

}  // namespace orvane::base
