// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "log/line_ring.h"

#include <cstring>

namespace tvset {

LineRing::LineRing(size_t capacity) : capacity_(capacity), bytes_(new char[capacity]) {}

size_t LineRing::SizeOf(const LineHead& head) {
  const size_t size = sizeof(LineHead) + head.tag_size + head.text_size;
  return (size + alignof(LineHead) - 1) / alignof(LineHead) * alignof(LineHead);
}

size_t LineRing::Append(const LineHead& head, std::string_view tag, std::string_view text) {
  const size_t size = SizeOf(head);
  size_t dropped = 0;
  while (!Reserve(size)) {
    DropOldest();
    ++dropped;
  }
  char* at = bytes_.get() + next_;
  std::memcpy(at, &head, sizeof(head));
  // Not memcpy: where the compiler knows a bound of the size, it makes a string instruction of
  // that, which takes longer to begin than most lines take to copy.
  std::memmove(at + sizeof(head), tag.data(), tag.size());
  std::memmove(at + sizeof(head) + tag.size(), text.data(), text.size());
  next_ += size;
  ++count_;
  return dropped;
}

// Makes [next_, next_ + size) free and contiguous; false when an old line is in the way.
bool LineRing::Reserve(size_t size) {
  if (wrapped_) return size <= oldest_ - next_;
  if (size <= capacity_ - next_) return true;
  if (size > oldest_) return false;
  upper_end_ = next_;
  next_ = 0;
  wrapped_ = true;
  return true;
}

void LineRing::DropOldest() {
  LineHead head{};
  std::memcpy(&head, bytes_.get() + oldest_, sizeof(head));
  oldest_ += SizeOf(head);
  --count_;
  if (wrapped_ && oldest_ == upper_end_) {
    oldest_ = 0;
    wrapped_ = false;
  }
  if (count_ == 0) Clear();
}

void LineRing::Clear() {
  count_ = oldest_ = next_ = upper_end_ = 0;
  wrapped_ = false;
}

std::vector<LogLine> LineRing::Lines() const {
  std::vector<LogLine> lines;
  lines.reserve(count_);
  size_t at = oldest_;
  for (size_t i = 0; i < count_; ++i) {
    if (wrapped_ && at == upper_end_) at = 0;
    LineHead head{};
    std::memcpy(&head, bytes_.get() + at, sizeof(head));
    const char* tag = bytes_.get() + at + sizeof(head);
    lines.push_back(LogLine{head.time_ns, head.pid, head.tid, head.log_id, head.priority,
                            std::string(tag, head.tag_size),
                            std::string(tag + head.tag_size, head.text_size)});
    at += SizeOf(head);
  }
  return lines;
}

}  // namespace tvset
