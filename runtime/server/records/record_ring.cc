// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/records/record_ring.h"

#include <algorithm>
#include <vector>

namespace orvane::server {

const std::string& RecordRing::Add(Json object) {
  object["seq"] = last_seq_ + 1;
  return AddNumbered(base::JsonText(object));
}

const std::string& RecordRing::AddNumbered(std::string_view object) {
  ++last_seq_;
  bytes_ += object.size();
  records_.emplace_back(object);
  while (records_.size() > 1 && (records_.size() > max_records_ || bytes_ > max_bytes_)) {
    bytes_ -= records_.front().size();
    records_.pop_front();
  }
  return records_.back();
}

void RecordRing::Clear() {
  records_.clear();
  bytes_ = 0;
}

std::string RecordRing::List(int64_t since, int64_t limit, int64_t* next) const {
  const auto size = static_cast<int64_t>(records_.size());
  const int64_t first_seq = last_seq_ - size + 1;
  const int64_t begin = std::clamp<int64_t>(since, first_seq - 1, last_seq_) + 1 - first_seq;
  const int64_t end = begin + std::clamp<int64_t>(limit, 0, size - begin);
  *next = std::max(since, end == size ? last_seq_ : first_seq + end - 1);
  return JoinToArray(std::vector<std::string>(records_.begin() + begin, records_.begin() + end));
}

}  // namespace orvane::server
