// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/frame.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdint>

namespace orvane::base {

namespace {

constexpr size_t kReadBytes = size_t{64} << 10;

void CheckLength(size_t length) {
  if (length <= kMaxBodyBytes) return;
  throw FrameError("a frame of " + std::to_string(length) + " bytes is longer than the limit of " +
                   std::to_string(kMaxBodyBytes) + "; send less at a time");
}

uint32_t LengthOf(std::string_view header) {
  uint32_t length = 0;
  for (size_t i = kHeaderBytes; i > 0; --i) {
    length = length << 8 | static_cast<unsigned char>(header[i - 1]);
  }
  return length;
}

}  // namespace

void AppendFrame(std::string_view body, std::string* bytes) {
  CheckLength(body.size());
  bytes->reserve(bytes->size() + kHeaderBytes + body.size());
  auto length = static_cast<uint32_t>(body.size());
  for (size_t i = 0; i < kHeaderBytes; ++i, length >>= 8) {
    bytes->push_back(static_cast<char>(length & 0xffU));
  }
  bytes->append(body);
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

std::optional<std::string_view> FrameReader::Next() {
  std::string_view left = bytes_;
  left.remove_prefix(taken_);
  if (left.size() < kHeaderBytes) return std::nullopt;
  const size_t length = LengthOf(left);
  CheckLength(length);
  if (left.size() - kHeaderBytes < length) return std::nullopt;
  taken_ += kHeaderBytes + length;
  return left.substr(kHeaderBytes, length);
}

std::optional<std::string_view> ReceiveFrame(int socket, FrameReader* reader) {
  while (true) {
    if (const auto body = reader->Next()) return body;
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
