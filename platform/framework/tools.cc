// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/tools.h"

#include <unistd.h>

#include <array>
#include <utility>

#include <aul.h>
#include <privilege.h>

namespace common::tools {

namespace {

// Application ids are shorter than 128 characters; the buffer leaves room for the platform's
// largest.
constexpr size_t kAppIdSize = 255;

void FillError(ErrorCode code, const std::string& name, const std::string& message,
               picojson::object& out) {
  picojson::object error;
  error["code"] = picojson::value(static_cast<double>(code));
  error["name"] = picojson::value(name);
  error["message"] = picojson::value(message);
  out.erase("result");
  out["status"] = picojson::value("error");
  out["error"] = picojson::value(std::move(error));
}

}  // namespace

void ReportSuccess(picojson::object& out) {
  out.erase("error");
  out.erase("result");
  out["status"] = picojson::value("success");
}

void ReportSuccess(const picojson::value& result, picojson::object& out) {
  out.erase("error");
  out["status"] = picojson::value("success");
  out["result"] = result;
}

void ReportError(const PlatformResult& result, picojson::object& out) {
  FillError(result.error_code(), ErrorName(result.error_code()), result.message(), out);
}

void ReportError(const PlatformException& exception, picojson::object& out) {
  FillError(exception.code(), exception.name(), exception.message(), out);
}

PlatformResult CheckAccess(const std::string& privilege) {
  std::array<char, kAppIdSize> app_id{};
  const bool known =
      aul_app_get_appid_bypid(getpid(), app_id.data(), static_cast<int>(app_id.size())) == AUL_R_OK;
  if (known && privilege_check_application(app_id.data(), privilege.c_str()) == 0) {
    return PlatformResult();
  }
  return PlatformResult(ErrorCode::SECURITY_ERR, "Permission denied");
}

}  // namespace common::tools
