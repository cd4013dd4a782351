// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include <picojson.h>

#include "television/request_error.h"

namespace orvane::television {

// Reads the fields of one JSON object, which someone else wrote. `owner` names the object in error
// texts. Borrows the object. Every reader throws RequestError, with the field's name and what it
// has to be. A field that is null counts as not given.
class Fields {
 public:
  Fields(const picojson::object& object, std::string owner)
      : object_(object), owner_(std::move(owner)) {}
  // The same for a value that may be no object.
  Fields(const picojson::value& value, std::string owner);

  const std::string& owner() const { return owner_; }
  const picojson::object& object() const { return object_; }
  const picojson::value* Find(const std::string& name) const;  // null: not given
  bool Has(const std::string& name) const { return Find(name) != nullptr; }

  const std::string& Text(const std::string& name) const;
  std::string Text(const std::string& name, const std::string& otherwise) const;
  int64_t Integer(const std::string& name, int64_t lowest, int64_t highest) const;
  int64_t Integer(const std::string& name, int64_t lowest, int64_t highest,
                  int64_t otherwise) const;
  bool Flag(const std::string& name, bool otherwise) const;
  const picojson::array& Array(const std::string& name) const;  // empty when not given
  Fields Object(const std::string& name) const;

  [[noreturn]] void Refuse(const std::string& name, const std::string& wanted) const;

 private:
  const picojson::object& object_;
  const std::string owner_;
};

}  // namespace orvane::television
