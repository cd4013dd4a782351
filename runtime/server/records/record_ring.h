// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>

#include "base/json_fields.h"

namespace orvane::server {

// The texts of JSON values as a JSON array.
template <class Texts>
std::string JoinToArray(const Texts& texts) {
  std::string array = "[";
  for (const std::string& text : texts) {
    if (array.size() > 1) array += ',';
    array += text;
  }
  return array += ']';
}

// The newest of a stream of JSON objects, each with a number of its own, `seq`, that never comes
// again. It keeps their texts, as they are told and listed. One thread.
class RecordRing {
 public:
  RecordRing(size_t max_records, size_t max_bytes)
      : max_records_(max_records), max_bytes_(max_bytes) {}

  // Numbers an object. Returns its text, valid until the next call of a member that is not const.
  template <class T>
  const std::string& Add(T record) {
    const base::Numbered<T> numbered{std::move(record), last_seq_ + 1};
    return AddNumbered(base::TextOf(numbered));
  }
  const std::string& Add(Json object);
  // The same for the text of an object that has its number: one above that of the one before it.
  const std::string& AddNumbered(std::string_view object);
  void Clear();

  // At most `limit` objects with numbers above `since`, as the text of an array; `next` becomes the
  // number to go on with.
  std::string List(int64_t since, int64_t limit, int64_t* next) const;

 private:
  const size_t max_records_;
  const size_t max_bytes_;
  std::deque<std::string> records_;
  size_t bytes_ = 0;
  int64_t last_seq_ = 0;
};

}  // namespace orvane::server
