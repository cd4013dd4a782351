// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::base {

// A JSON object that someone else wrote: checked whole, once, and then read in place, so that a
// message is passed on without being built anew. Borrows the text. Values nest at most 64 deep.
// A name is compared as it is written; one that is written with escapes is known to nobody.
class JsonObject {
 public:
  // Nothing unless `text` is one well-formed object in UTF-8, and nothing else.
  static std::optional<JsonObject> Parse(std::string_view text);

  // Names without their quotes, and values, in the order of the text.
  const std::vector<std::pair<std::string_view, std::string_view>>& members() const {
    return members_;
  }

  // The value as it is written; empty when there is no such member.
  std::string_view Raw(std::string_view name) const;
  // The same for a value that is a string, with its quotes.
  std::string_view RawText(std::string_view name) const;

  std::optional<std::string> Text(std::string_view name) const;
  std::optional<int64_t> Integer(std::string_view name) const;
  bool Flag(std::string_view name) const;  // false unless it is true

 private:
  std::vector<std::pair<std::string_view, std::string_view>> members_;
};

// The elements of a well-formed array, each as it is written. Nothing when it is none.
std::optional<std::vector<std::string_view>> JsonElements(std::string_view text);

// The text that a JSON string, given with its quotes, stands for. The string has to be well formed.
std::string DecodeJsonString(std::string_view raw);

}  // namespace orvane::base
