// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/fault_option.h"

#include "cli/exit_code.h"
#include "television/fault_text.h"
#include "television/request_error.h"

namespace orvane::cli {

tvset::Fault ParseFault(const std::string& text) {
  try {
    return television::ParseFault(text);
  } catch (const television::RequestError& error) {
    throw UsageError(std::string("--fail ") + error.what());
  }
}

}  // namespace orvane::cli
