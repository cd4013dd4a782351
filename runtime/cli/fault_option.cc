// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/fault_option.h"

#include "cli/exit_code.h"
#include "library_process/fault_text.h"
#include "library_process/request_error.h"

namespace orvane::cli {

tvset::Fault ParseFault(const std::string& text) {
  try {
    return library_process::ParseFault(text);
  } catch (const library_process::RequestError& error) {
    throw UsageError(std::string("--fail ") + error.what());
  }
}

}  // namespace orvane::cli
