// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <picojson.h>

#include "common/export.h"
#include "common/platform_exception.h"
#include "common/platform_result.h"

namespace common::tools {

// Fill a reply object in the message format: {"status": "success"}, with "result" where one is
// given, or {"status": "error", "error": {"code", "name", "message"}}. What the object held under
// these names is replaced, the rest stays. Any thread; the object is the caller's.
WEBAPI_EXPORT void ReportSuccess(picojson::object& out);
WEBAPI_EXPORT void ReportSuccess(const picojson::value& result, picojson::object& out);
WEBAPI_EXPORT void ReportError(const PlatformResult& result, picojson::object& out);
WEBAPI_EXPORT void ReportError(const PlatformException& exception, picojson::object& out);

// Success when the calling application holds `privilege`; otherwise SECURITY_ERR "Permission
// denied". `privilege` is a URI. The platform is asked each time, and an application that it cannot
// name holds nothing. Any thread.
WEBAPI_EXPORT PlatformResult CheckAccess(const std::string& privilege);

}  // namespace common::tools
