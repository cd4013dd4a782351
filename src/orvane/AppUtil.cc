// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/AppUtil.h"

#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <app_manager.h>
#include <app_manager_extension.h>
#include <aul.h>
#include <pkgmgr-info.h>

#include "common/logger.h"

namespace {

// The size that the platform gives to an application's id, with its end.
constexpr int kAppIdSize = 255;

const char* StateName(int state) {
  switch (state) {
    case APP_STATE_FOREGROUND:
      return "FOREGROUND";
    case APP_STATE_BACKGROUND:
      return "BACKGROUND";
    case APP_STATE_SERVICE:
      return "SERVICE";
    case APP_STATE_TERMINATED:
      return "TERMINATED";
    default:
      return "UNDEFINED";
  }
}

// The calling application's whole id. A failure is logged as that of `caller`.
bool ReadOwnId(const common::LogPlace& caller, char (&buffer)[kAppIdSize]) {
  const pid_t pid = getpid();
  if (pid == -1) {
    LOG_AT(DLOG_ERROR, common::kModuleTag, caller, "getpid failed");
    return false;
  }
  if (aul_app_get_appid_bypid(pid, buffer, kAppIdSize) != AUL_R_OK) {
    LOG_AT(DLOG_INFO, common::kModuleTag, caller, "aul_app_get_appid_bypid failed");
    return false;
  }
  return true;
}

}  // namespace

bool AppUtil::GetAppID(char** app_id) {
  char buffer[kAppIdSize] = {};
  if (!ReadOwnId(LOG_PLACE(__LINE__), buffer)) {
    return false;
  }
  char* rest = nullptr;
  const char* const package = strtok_r(buffer, ".", &rest);
  *app_id = strdup(package == nullptr ? "" : package);
  return *app_id != nullptr;
}

bool AppUtil::GetCompleteAppID(char** app_id) {
  char buffer[kAppIdSize] = {};
  if (!ReadOwnId(LOG_PLACE(__LINE__), buffer)) {
    return false;
  }
  *app_id = strdup(buffer);
  return *app_id != nullptr;
}

std::string AppUtil::GetFocusedAppID() {
  app_context_h context = nullptr;
  char* app_id = nullptr;
  if (app_manager_get_focused_app_context(&context) == APP_MANAGER_ERROR_NONE &&
      app_context_get_app_id(context, &app_id) == APP_MANAGER_ERROR_NONE) {
    app_context_destroy(context);
    std::string result(app_id);
    free(app_id);
    return result;
  }
  LoggerE("app_manager/context failed");
  if (context != nullptr) {
    app_context_destroy(context);
  }
  free(app_id);
  static const std::string kNone;
  return kNone;
}

std::string AppUtil::GetMetadataValue(std::string key) {
  char* own_id = nullptr;
  if (!GetCompleteAppID(&own_id)) {
    LoggerE("Getting of AppID failed");
    return {};
  }
  LoggerE("APPID: %s", own_id);
  const std::string app_id(own_id);
  free(own_id);

  pkgmgrinfo_appinfo_h handle = nullptr;
  if (pkgmgrinfo_appinfo_get_appinfo(app_id.c_str(), &handle) != PMINFO_R_OK) {
    LoggerE("pkgmgrinfo_appinfo_get_appinfo failed");
    return {};
  }
  char* value = nullptr;
  if (pkgmgrinfo_appinfo_get_metadata_value(handle, key.c_str(), &value) != PMINFO_R_OK) {
    LoggerE("pkgmgrinfo_appinfo_get_metadata_value failed");
    pkgmgrinfo_appinfo_destroy_appinfo(handle);
    return {};
  }
  // The value belongs to the handle and goes with it.
  std::string result(value == nullptr ? "" : value);
  pkgmgrinfo_appinfo_destroy_appinfo(handle);
  return result;
}

std::string AppUtil::GetAppState(std::string app_id) {
  if (app_id.empty()) {
    char* own_id = nullptr;
    if (!GetCompleteAppID(&own_id)) {
      LoggerE("Failed to get appid");
      return {};
    }
    app_id = own_id;
    free(own_id);
  }
  LoggerI("App ID : %s", app_id.c_str());

  app_context_h context = nullptr;
  if (app_manager_get_app_context(app_id.c_str(), &context) != APP_MANAGER_ERROR_NONE) {
    LoggerE("Failed to get app context");
    return {};
  }
  app_state_e state = APP_STATE_UNDEFINED;
  if (app_context_get_app_state(context, &state) != APP_MANAGER_ERROR_NONE) {
    LoggerE("Failed to get app state");
    app_context_destroy(context);
    return {};
  }
  app_context_destroy(context);
  LoggerI("App State : %d", static_cast<int>(state));
  return StateName(state);
}
