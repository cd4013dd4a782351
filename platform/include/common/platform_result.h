// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "common/export.h"

namespace common {

// The codes that a page sees as an error's `code`; each has one name. Pages compare the numbers, so
// they stay.
enum class ErrorCode : int {
  NO_ERROR = 0,
  // A command that the extension does not know.
  NOT_SUPPORTED_ERR = 9,
  // An argument that is missing or of the wrong type.
  TYPE_MISMATCH_ERR = 17,
  // The application does not hold a privilege that the call needs.
  SECURITY_ERR = 18,
  // Everything else: a message that cannot be read, a platform function that failed, an exception.
  UNKNOWN_ERR = 9999,
};

// The name that goes with a code, such as "UnknownError"; unknown codes count as UNKNOWN_ERR. The
// text is static. Any thread.
WEBAPI_EXPORT const char* ErrorName(ErrorCode code);

// What a call into the platform came to: a code and, for an error, a message for the page. A value
// that is copied; true where the call succeeded. Partner of ParsedInstance::ReportError, which
// makes the page's reply of it.
class PlatformResult {
 public:
  // Success, unless told otherwise.
  explicit PlatformResult(ErrorCode error_code = ErrorCode::NO_ERROR, std::string message = {})
      : error_code_(error_code), message_(std::move(message)) {}

  ErrorCode error_code() const { return error_code_; }
  const std::string& message() const { return message_; }

  // The code alone decides: success may have a message, and an error none.
  bool IsSuccess() const { return error_code_ == ErrorCode::NO_ERROR; }
  bool IsError() const { return !IsSuccess(); }
  explicit operator bool() const { return IsSuccess(); }

 private:
  ErrorCode error_code_;
  std::string message_;
};

}  // namespace common
