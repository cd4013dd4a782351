// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_fields.h"

#include "base/near_names.h"

namespace orvane::base::fields {

namespace {

std::string Listed(const std::vector<std::string_view>& names, const char* last_word) {
  std::string text;
  for (size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? last_word : ", ";
    text.append("\"").append(names[i]).append("\"");
  }
  return text;
}

}  // namespace

void Refuse(std::string_view field, const std::string& wanted, const Json* given) {
  const std::string what = std::string(field) + " has to be " + wanted;
  if (given == nullptr || given->is_null()) throw JsonError(what + ", but is not given.");
  throw JsonError(what + ", but is " + Excerpt(*given) + ".");
}

void RefuseUnknown(std::string_view owner, const std::string& name,
                   const std::vector<std::string_view>& known) {
  const std::vector<std::string> names(known.begin(), known.end());
  throw JsonError("There is no " + Excerpt(Json(name)) + " among " + std::string(owner) +
                  "; there is " + (known.empty() ? "none" : Listed(known, " and ")) + "." +
                  DidYouMean(NearNames(name, names)));
}

std::string WholeNumber(const std::string& lowest, const std::string& highest) {
  return "a whole number from " + lowest + " to " + highest;
}

std::string OneOf(const std::vector<std::string_view>& names) { return Listed(names, " or "); }

}  // namespace orvane::base::fields
