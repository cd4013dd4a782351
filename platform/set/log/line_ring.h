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

// What precedes a line's tag and text in the ring.
struct LineHead {
  int64_t time_ns;
  int32_t pid;
  int32_t tid;
  int16_t log_id;
  int16_t priority;
  uint16_t tag_size;
  uint16_t text_size;
};

// Log lines in a fixed number of bytes, oldest dropped first. Each line is one contiguous record.
// Takes no lock and allocates only when it is made.
class LineRing {
 public:
  explicit LineRing(size_t capacity);

  // How many old lines made room. The line must fit: SizeOf(its head) <= capacity().
  size_t Append(const LineHead& head, std::string_view tag, std::string_view text);
  void Clear();
  std::vector<LogLine> Lines() const;
  size_t capacity() const { return capacity_; }

  static size_t SizeOf(const LineHead& head);

 private:
  bool Reserve(size_t size);
  void DropOldest();

  const size_t capacity_;
  const std::unique_ptr<char[]> bytes_;
  size_t count_ = 0;
  size_t oldest_ = 0;     // where the oldest record begins
  size_t next_ = 0;       // where the next one goes
  size_t upper_end_ = 0;  // where the records above oldest_ end, once next_ has begun again at 0
  bool wrapped_ = false;  // next_ is below oldest_, or on it when the ring is full
};

}  // namespace tvset
