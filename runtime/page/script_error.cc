// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/script_error.h"

namespace orvane::page {

std::string Format(const ScriptError& error) {
  std::string text = error.file;
  if (error.line > 0) text += ':' + std::to_string(error.line);
  if (error.line > 0 && error.column > 0) text += ':' + std::to_string(error.column);
  return text.empty() ? error.message : text + ": " + error.message;
}

}  // namespace orvane::page
