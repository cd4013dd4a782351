// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/orvane_instance.h"

#include <functional>
#include <utility>

#include <VirtualKey.h>
#include <app_context_manager.h>
#include <system_info.h>

#include "common/logger.h"
#include "common/tools.h"
#include "orvane/AppUUID.h"
#include "orvane/AppUtil.h"
#include "orvane/constants.h"
#include "orvane/numbers.h"

namespace {

using common::ErrorCode;
using common::PlatformResult;
using extension::orvane::ContextTaskEntry;
namespace fixed_line = common::fixed_line;

// The file's own copy of the privilege, besides the namespace's.
const std::string kPrivilegeOrvane = extension::orvane::kPrivilegeOrvane;
const std::string kPrivilegePlatform = "http://tizen.org/privilege/internal/default/platform";
const std::string kMetaDataKeySpecialMode =
    "http://dravelt.example/tv/metadata/register.keygrab.mode.special";

// Press and release in one call.
constexpr int kKeyPressAndRelease = 2;
constexpr size_t kUuidBufferSize = 37;

PlatformResult UnknownError(const char* message) {
  return PlatformResult(ErrorCode::UNKNOWN_ERR, message);
}

// The row with the index `number`, its fraction cut off; null for a number outside the table, which
// a page can send past the script's check of its arguments.
template <size_t kRows>
const ContextTaskEntry* RowAt(const ContextTaskEntry (&table)[kRows], double number) {
  const int32_t index = extension::orvane::TruncateToInt32(number);
  return index >= 0 && index < static_cast<int32_t>(kRows) ? &table[index] : nullptr;
}

}  // namespace

namespace extension::orvane {

// The script's numbers are the rows' indexes.
ContextTaskEntry g_OrvaneTargetMap[] = {{0, "last:source"}};
ContextTaskEntry g_OrvaneActionMap[] = {{0, "launch"}};

OrvaneInstance::OrvaneInstance() : common::ParsedInstance("3.9"), manager_(this) {
  using Member = void (OrvaneInstance::*)(const picojson::value&, picojson::object&);
  const auto add = [this](const char* name, Member handler) {
    using std::placeholders::_1;
    using std::placeholders::_2;
    RegisterSyncHandler(name, std::bind(handler, this, _1, _2));
  };
  add("OrvaneManager_getVersion", &OrvaneInstance::getVersion);
  add("OrvaneManager_getUuid", &OrvaneInstance::getUuid);
  add("OrvaneManager_generateKey", &OrvaneInstance::generateKey);
  add("OrvaneManager_getForegroundAppId", &OrvaneInstance::getForegroundAppId);
  add("OrvaneManager_setEpopAppWindow", &OrvaneInstance::setEpopAppWindow);
  add("OrvaneManager_requestTvContextTask", &OrvaneInstance::requestTvContextTask);
  add("OrvaneManager_registerKeyInSpecialMode", &OrvaneInstance::registerKeyInSpecialMode);
  add("OrvaneManager_checkPlatformLevelPrivilege", &OrvaneInstance::checkPlatformLevelPrivilege);
  add("OrvaneManager_getIMEResolution", &OrvaneInstance::getIMEResolution);
  add("OrvaneManager_getAppState", &OrvaneInstance::getAppState);
  add("OrvaneManager_getSystemStat", &OrvaneInstance::getSystemStat);
  add("OrvaneManager_setScreenSaver", &OrvaneInstance::setScreenSaver);
  add("OrvaneManager_recordProfiling", &OrvaneInstance::recordProfiling);
  VirtualKey_Initialize(0);
}

OrvaneInstance::~OrvaneInstance() {
  LoggerD_AT(fixed_line::kInstanceDestroyed, "Entered %s, Params: None", __func__);
}

void OrvaneInstance::getVersion(const picojson::value& /*args*/, picojson::object& out) {
  LoggerD_AT(fixed_line::kVersion, "Version of plugin: %s", version().c_str());
  ReportSuccess(picojson::value(version()), out);
}

void OrvaneInstance::getUuid(const picojson::value& /*args*/, picojson::object& out) {
  char uuid[kUuidBufferSize] = {};
  if (AppUUID::GetUUID(uuid) == 0) {
    LoggerI_AT(fixed_line::kUuid, "UUID is [%s]", uuid);
    ReportSuccess(picojson::value(uuid), out);
    return;
  }
  // The page's text names no cause and does not fit the log's: pages compare it, and so it stays.
  LoggerI_AT(fixed_line::kNoUuid, "UUID is not generated");
  ReportError(UnknownError("Invalid Choice"), out);
}

void OrvaneInstance::generateKey(const picojson::value& args, picojson::object& out) {
  if (!args.contains("xKeyCode")) {
    ReportError(common::TypeMismatchException("xKeyCode is required argument"), out);
    return;
  }
  const int32_t key_code = TruncateToInt32(args.get("xKeyCode").get<double>());
  // What the injection came to is not the page's business.
  VirtualKey_Send_KeyCode(key_code, kKeyPressAndRelease);
  ReportSuccess(picojson::value(true), out);
}

void OrvaneInstance::getForegroundAppId(const picojson::value& /*args*/, picojson::object& out) {
  const std::string app_id = AppUtil::GetFocusedAppID();
  if (!app_id.empty()) {
    // At error priority although nothing failed: field tools look for it there.
    LoggerE_AT(fixed_line::kForegroundAppId, "appID is [%s]", app_id.c_str());
    ReportSuccess(picojson::value(app_id), out);
    return;
  }
  LoggerE_AT(fixed_line::kNoForegroundAppId, "appID is null");
  ReportError(UnknownError("AppID is null"), out);
}

void OrvaneInstance::setEpopAppWindow(const picojson::value& /*args*/, picojson::object& out) {
  bool supported = false;
  if (system_info_get_custom_bool("com.korvale/featureconf/ud_panel_supported", &supported) != 0) {
    // A set that does not know the key has a panel without the window.
    LoggerE_AT(fixed_line::kNoPanelFeature, "get ud_panel_supported value failed");
    supported = false;
  }
  if (supported) {
    ReportSuccess(picojson::value(true), out);
    return;
  }
  ReportError(PlatformResult(ErrorCode::NOT_SUPPORTED_ERR,
                             "setEpopappWindow is only supported on UHD models"),
              out);
}

void OrvaneInstance::requestTvContextTask(const picojson::value& args, picojson::object& out) {
  const double target = args.get("target").get<double>();
  const double action = args.get("action").get<double>();
  if (app_context_manager_init() != 0) {
    ReportError(UnknownError("vcontext_init is failed"), out);
    return;
  }
  const ContextTaskEntry* const target_row = RowAt(g_OrvaneTargetMap, target);
  const ContextTaskEntry* const action_row = RowAt(g_OrvaneActionMap, action);
  if (target_row == nullptr || action_row == nullptr ||
      app_context_manager_request_task(target_row->name, action_row->name) != 0) {
    ReportError(UnknownError("tvcontext_request_task is failed"), out);
    return;
  }
  ReportSuccess(picojson::value(true), out);
}

void OrvaneInstance::registerKeyInSpecialMode(const picojson::value& /*args*/,
                                              picojson::object& out) {
  if (special_mode_metadata_.empty()) {
    special_mode_metadata_ = AppUtil::GetMetadataValue(kMetaDataKeySpecialMode);
  }
  try {
    if (special_mode_metadata_ == "true") {
      ReportSuccess(picojson::value(true), out);
    } else {
      ReportError(PlatformResult(ErrorCode::NOT_SUPPORTED_ERR,
                                 "Application does not have required metadata value"),
                  out);
    }
  } catch (...) {
    ReportError(UnknownError("Unexpected error occurred"), out);
  }
}

void OrvaneInstance::checkPlatformLevelPrivilege(const picojson::value& /*args*/,
                                                 picojson::object& out) {
  const PlatformResult result = common::tools::CheckAccess(kPrivilegePlatform);
  if (result.IsSuccess()) {
    ReportSuccess(out);
    return;
  }
  common::tools::ReportError(result, out);
}

void OrvaneInstance::getIMEResolution(const picojson::value& /*args*/, picojson::object& out) {
  int resolution = 0;
  if (system_info_get_custom_int("com.korvale/featureconf/ime.resolution", &resolution) != 0) {
    LoggerE_AT(fixed_line::kNoImeResolution, "Failed to get ime resolution");
    ReportError(UnknownError("Failed to get ime resolution"), out);
    return;
  }
  ReportSuccess(picojson::value(static_cast<double>(resolution)), out);
}

void OrvaneInstance::getAppState(const picojson::value& args, picojson::object& out) {
  const std::string state = AppUtil::GetAppState(args.get("appid").get<std::string>());
  if (state.empty()) {
    ReportError(UnknownError("Failed to get app state"), out);
    return;
  }
  ReportSuccess(picojson::value(state), out);
}

void OrvaneInstance::getSystemStat(const picojson::value& args, picojson::object& out) {
  const std::string& resource = args.get("resource").get<std::string>();
  if (resource == "CPU") {
    manager_.GetCpuStat(args, out);
    return;
  }
  if (resource == "MEMORY") {
    manager_.GetMemoryStat(args, out);
    return;
  }
  ReportError(UnknownError("Invalid resource for getSystemStat"), out);
}

void OrvaneInstance::setScreenSaver(const picojson::value& args, picojson::object& out) {
  manager_.SetScreenSaver(args, out);
}

void OrvaneInstance::recordProfiling(const picojson::value& args, picojson::object& out) {
  manager_.RecordProfiling(args, out);
}

}  // namespace extension::orvane
