// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/platform_exception.h"

#include <utility>

namespace common {

const char* ErrorName(ErrorCode code) {
  switch (code) {
    case ErrorCode::NO_ERROR:
      return "NoError";
    case ErrorCode::NOT_SUPPORTED_ERR:
      return "NotSupportedError";
    case ErrorCode::TYPE_MISMATCH_ERR:
      return "TypeMismatchError";
    case ErrorCode::SECURITY_ERR:
      return "SecurityError";
    case ErrorCode::UNKNOWN_ERR:
      break;
  }
  return "UnknownError";
}

PlatformException::PlatformException(ErrorCode code, std::string name, std::string message)
    : code_(code), name_(std::move(name)), message_(std::move(message)) {}

PlatformException::~PlatformException() = default;

TypeMismatchException::TypeMismatchException(std::string message)
    : PlatformException(ErrorCode::TYPE_MISMATCH_ERR, ErrorName(ErrorCode::TYPE_MISMATCH_ERR),
                        std::move(message)) {}

TypeMismatchException::~TypeMismatchException() = default;

}  // namespace common
