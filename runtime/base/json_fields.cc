// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_fields.h"

#include <algorithm>

#include "base/near_names.h"

namespace orvane::base::fields {

void Refuse(std::string_view field, const std::string& wanted, const Json* given) {
  const std::string what = std::string(field) + " has to be " + wanted;
  if (given == nullptr || given->is_null()) throw JsonError(what + ", but is not given.");
  throw JsonError(what + ", but is " + Excerpt(*given) + ".");
}

void RefuseOthers(const Json& object, std::string_view owner,
                  const std::vector<std::string_view>& known) {
  for (const auto& [name, value] : object.items()) {
    if (std::find(known.begin(), known.end(), name) != known.end()) continue;
    const std::vector<std::string> names(known.begin(), known.end());
    throw JsonError("There is no " + Excerpt(Json(name)) + " among " + std::string(owner) +
                    "; there is " + (names.empty() ? "none" : QuotedNames(names, " and ")) + "." +
                    DidYouMean(NearNames(name, names)));
  }
}

std::string WholeNumber(const std::string& lowest, const std::string& highest) {
  return "a whole number from " + lowest + " to " + highest;
}

}  // namespace orvane::base::fields
