// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace orvane::server {

// What one client may cost. Tests make them smaller.
struct Limits {
  uint32_t header_bytes = 64U << 10U;
  // More than the set process takes, so that a message that is too long for it is answered.
  uint64_t body_bytes = uint64_t{20} << 20U;
  size_t message_bytes = size_t{20} << 20U;
  size_t queued_bytes = size_t{64} << 20U;   // on a WebSocket whose client does not read
  size_t library_bytes = size_t{32} << 20U;  // for a library that is slower than its pages
  size_t kept_frames = 65536;                // for a page that does not acknowledge them
  size_t kept_bytes = size_t{64} << 20U;
  size_t connections = 512;  // of one origin
  size_t contexts = 256;
  std::chrono::seconds request_time{15};  // for a request's head and body to arrive
  std::chrono::seconds idle_time{75};     // between two requests
  std::chrono::seconds write_time{30};    // for a client to take a part of an answer
};

}  // namespace orvane::server
