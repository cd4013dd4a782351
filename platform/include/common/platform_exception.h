// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <string>

#include "common/export.h"
#include "common/platform_result.h"

namespace common {

// An error with the name that the page sees. A handler that throws one, or any other exception, is
// answered for with UNKNOWN_ERR and the exception's text: to keep code and name, catch it and give
// it to ParsedInstance::ReportError. Partner of PlatformResult, which is for those who do not
// throw. A value that owns its texts and may cross threads.
class WEBAPI_EXPORT PlatformException : public std::exception {
 public:
  // `name` as a page reads it in error.name; ErrorName(code) is the one that goes with the code,
  // and another is sent as it is. `message` is for the developer of the page, in UTF-8.
  PlatformException(ErrorCode code, std::string name, std::string message);
  ~PlatformException() override;

  // As they were given.
  ErrorCode code() const { return code_; }
  const std::string& name() const { return name_; }
  const std::string& message() const { return message_; }
  // The message, for as long as the exception lives.
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  ErrorCode code_;
  std::string name_;
  std::string message_;
};

// An argument is missing or has the wrong type: TYPE_MISMATCH_ERR with its name. `message` says
// which argument, and what it has to be.
class WEBAPI_EXPORT TypeMismatchException : public PlatformException {
 public:
  explicit TypeMismatchException(std::string message);
  ~TypeMismatchException() override;
};

}  // namespace common
