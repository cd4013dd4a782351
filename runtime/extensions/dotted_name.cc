// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/dotted_name.h"

namespace orvane::extensions {
namespace {

bool IsIdentifierStart(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         character == '_' || character == '$';
}

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

}  // namespace

bool IsDottedName(std::string_view name) {
  bool at_start = true;
  for (const char character : name) {
    if (at_start) {
      if (!IsIdentifierStart(character)) return false;
      at_start = false;
    } else if (character == '.') {
      at_start = true;
    } else if (!IsIdentifierStart(character) && !IsDigit(character)) {
      return false;
    }
  }
  return !at_start;
}

}  // namespace orvane::extensions
