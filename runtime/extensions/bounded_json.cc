// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/bounded_json.h"

#include <exception>

namespace orvane::extensions {
namespace {

constexpr size_t kMaxDepth = 32;

// The library's own context with every level counted.
class BoundedContext : public picojson::default_parse_context {
 public:
  BoundedContext(picojson::value* out, size_t depth)
      : picojson::default_parse_context(out), depth_(depth) {}

  bool parse_array_start() {
    return depth_ > 0 && picojson::default_parse_context::parse_array_start();
  }
  bool parse_object_start() {
    return depth_ > 0 && picojson::default_parse_context::parse_object_start();
  }
  template <typename Iterator>
  bool parse_array_item(picojson::input<Iterator>& in, size_t) {
    auto& array = out_->get<picojson::array>();
    array.emplace_back();
    return ParseBelow(&array.back(), in);
  }
  template <typename Iterator>
  bool parse_object_item(picojson::input<Iterator>& in, const std::string& key) {
    return ParseBelow(&out_->get<picojson::object>()[key], in);
  }

 private:
  template <typename Iterator>
  bool ParseBelow(picojson::value* out, picojson::input<Iterator>& in) {
    BoundedContext below(out, depth_ - 1);
    return picojson::_parse(below, in);
  }

  const size_t depth_;
};

bool IsSpace(char character) {
  return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

}  // namespace

std::optional<picojson::value> ParseBoundedJson(std::string_view json, std::string* error) {
  error->clear();
  picojson::value value;
  try {
    BoundedContext context(&value, kMaxDepth);
    const char* const end = json.data() + json.size();
    const char* rest = picojson::_parse(context, json.data(), end, error);
    while (error->empty() && rest != end && IsSpace(*rest)) ++rest;
    if (error->empty() && rest != end) *error = "something follows the value";
  } catch (const std::overflow_error&) {
    *error = "a number is beyond the range of a double";
  }
  if (!error->empty()) return std::nullopt;
  return value;
}

}  // namespace orvane::extensions
