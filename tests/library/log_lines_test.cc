// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <cstdio>

#include "common/extension_detail.h"
#include "library_fixture.h"

namespace orvane::test {
namespace {

constexpr char kModule[] = "QM_WEBAPI";
constexpr char kPlugins[] = "WEBAPI_PLUGINS";

std::string CurrentExtension() {
  char text[32];
  snprintf(text, sizeof(text), "%p", static_cast<void*>(common::GetCurrentExtension()));
  return text;
}

// The lines whose whole text field tools match, each with its fixed number: every row of
// common/fixed_lines.h is held here, in the assertions' tests and in those without an extension.
class LogLines : public LibraryFixture {};

TEST_F(LogLines, Initialization) {
  host_.ShutDown();
  ClearLog();
  host_.Initialize(XW_Initialize);
  ExpectLog(DLOG_DEBUG, kPlugins,
            "logger.h: ScopeLogger > XW_Extension.cc: XW_Initialize(37) > Enter ");
  ExpectLog(DLOG_ERROR, kPlugins,
            "XW_Extension.cc: XW_Initialize(43) > Extension::Detail::XW_Initialize Created "
            "Extension - " +
                CurrentExtension());
  ExpectLog(DLOG_DEBUG, kPlugins,
            "logger.h: ~ScopeLogger(288) > XW_Extension.cc: XW_Initialize > Exit");
}

TEST_F(LogLines, InstanceCreated) {
  host_.Destroy(host_.Create());
  ExpectLog(DLOG_DEBUG, kPlugins,
            "logger.h: ScopeLogger > XW_Extension.cc: OnInstanceCreated(48) > Enter ");
  ExpectLog(DLOG_DEBUG, kPlugins,
            "logger.h: ~ScopeLogger(288) > XW_Extension.cc: OnInstanceCreated > Exit");
}

TEST_F(LogLines, Shutdown) {
  const std::string extension = CurrentExtension();
  host_.ShutDown();
  ExpectLog(DLOG_DEBUG, kPlugins,
            "logger.h: ScopeLogger > XW_Extension.cc: OnShutdown(60) > Enter ");
  ExpectLog(DLOG_ERROR, kPlugins,
            "XW_Extension.cc: OnShutdown(61) > Extension::Detail::OnShutdown Delete extension - " +
                extension);
  ExpectLog(DLOG_DEBUG, kPlugins,
            "logger.h: ~ScopeLogger(288) > XW_Extension.cc: OnShutdown > Exit");
}

TEST_F(LogLines, InstanceDestroyed) {
  CloseInstance();
  ExpectLog(DLOG_DEBUG, kModule,
            "orvane_instance.cc: ~OrvaneInstance(79) > Entered ~OrvaneInstance, Params: None");
}

TEST_F(LogLines, GetVersion) {
  Call("getVersion");
  ExpectLog(DLOG_DEBUG, kModule, "orvane_instance.cc: getVersion(85) > Version of plugin: 3.9");
}

TEST_F(LogLines, GetUuid) {
  const std::string uuid = Call("getUuid").get("result").to_str();
  ExpectLog(DLOG_INFO, kModule, "orvane_instance.cc: getUuid(103) > UUID is [" + uuid + "]");
  Fail("aul_app_get_appid_bypid");
  Call("getUuid");
  ExpectLog(DLOG_INFO, kModule, "orvane_instance.cc: getUuid(109) > UUID is not generated");
}

TEST_F(LogLines, GetForegroundAppId) {
  Call("getForegroundAppId");
  ExpectLog(DLOG_ERROR, kModule,
            "orvane_instance.cc: getForegroundAppId(118) > appID is [aBcDe01234.Player]");
  set().applications().ClearFocus();
  Call("getForegroundAppId");
  ExpectLog(DLOG_ERROR, kModule, "orvane_instance.cc: getForegroundAppId(123) > appID is null");
}

TEST_F(LogLines, SetEpopAppWindow) {
  Fail("system_info_get_custom_bool", -22);
  Call("setEpopAppWindow");
  ExpectLog(DLOG_ERROR, kModule,
            "orvane_instance.cc: setEpopAppWindow(132) > get ud_panel_supported value failed");
}

TEST_F(LogLines, GetImeResolution) {
  Fail("system_info_get_custom_int", -22);
  Call("getIMEResolution");
  ExpectLog(DLOG_ERROR, kModule,
            "orvane_instance.cc: getIMEResolution(215) > Failed to get ime resolution");
}

}  // namespace
}  // namespace orvane::test
