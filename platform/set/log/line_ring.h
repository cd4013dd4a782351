// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "tvset/events.h"

namespace tvset {

// What precedes a line's tag and text in the ring: LogLine's members in as few bytes as they take,
// since there is one for each line that is kept.
struct LineHead {
  // Nanoseconds of CLOCK_REALTIME.
  int64_t time_ns;
  int32_t pid;
  int32_t tid;
  int16_t log_id;
  int16_t priority;
  // Bytes that follow.
  uint16_t tag_size;
  uint16_t text_size;
};

// Log lines in a fixed number of bytes, oldest dropped first. Each line is one contiguous record.
// Takes no lock and allocates only when it is made, and for Lines. Owned by LogBuffer, whose lock
// guards it.
class LineRing {
 public:
  // Bytes for all lines together.
  explicit LineRing(size_t capacity);

  // Copies the line in. Answers how many old lines made room. The line must fit: SizeOf(its head)
  // <= capacity().
  size_t Append(const LineHead& head, std::string_view tag, std::string_view text);
  void Clear();
  // Copies of all of them, oldest first.
  std::vector<LogLine> Lines() const;
  size_t capacity() const { return capacity_; }

  // Bytes that a line with this head takes in the ring.
  static size_t SizeOf(const LineHead& head);

 private:
  // Makes room at next_ in one piece. False: an old line is in the way.
  bool Reserve(size_t size);
  // There has to be one.
  void DropOldest();

  const size_t capacity_;
  const std::unique_ptr<char[]> bytes_;
  // Lines in the ring.
  size_t count_ = 0;
  // Where the oldest record begins.
  size_t oldest_ = 0;
  // Where the next one goes.
  size_t next_ = 0;
  // Where the records above oldest_ end, once next_ has begun again at 0.
  size_t upper_end_ = 0;
  // next_ is below oldest_, or on it when the ring is full.
  bool wrapped_ = false;
};

}  // namespace tvset
