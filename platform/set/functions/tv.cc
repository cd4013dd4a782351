// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The television's own services. Each answers 0 for success, -1 for a request that the service
// refuses and for a set that cannot be started, -22 for a NULL argument and a negative time.
#include <VirtualKey.h>
#include <app_context_manager.h>
#include <screensaver.h>

#include "functions/platform_call.h"

namespace tvset {
namespace {

constexpr int kDone = 0;
constexpr int kRefused = -1;
constexpr int kBadParameter = -22;

}  // namespace
}  // namespace tvset

// The library's start-up mode makes no difference here.
TVSET_EXPORT int VirtualKey_Initialize(int /*mode*/) {
  return tvset::PlatformCall("VirtualKey_Initialize", tvset::kRefused, [](tvset::Set& set) -> int {
    set.keys().Initialize();
    return tvset::kDone;
  });
}

TVSET_EXPORT int VirtualKey_Send_KeyCode(int key_code, int mode) {
  return tvset::PlatformCall(
      "VirtualKey_Send_KeyCode", tvset::kRefused, [&](tvset::Set& set) -> int {
        return set.keys().Send(key_code, mode) ? tvset::kDone : tvset::kRefused;
      });
}

TVSET_EXPORT int app_context_manager_init(void) {
  return tvset::PlatformCall("app_context_manager_init", tvset::kRefused,
                             [](tvset::Set& set) -> int {
                               set.context_manager().Initialize();
                               return tvset::kDone;
                             });
}

TVSET_EXPORT int app_context_manager_request_task(const char* target, const char* action) {
  return tvset::PlatformCall(
      "app_context_manager_request_task", tvset::kRefused, [&](tvset::Set& set) -> int {
        if (target == nullptr || action == nullptr) return tvset::kBadParameter;
        return set.context_manager().RequestTask(target, action) ? tvset::kDone : tvset::kRefused;
      });
}

TVSET_EXPORT int screensaver_set_appid(const char* app_id) {
  return tvset::PlatformCall("screensaver_set_appid", tvset::kRefused, [&](tvset::Set& set) -> int {
    if (app_id == nullptr) return tvset::kBadParameter;
    set.screen_saver().SetAppId(app_id);
    return tvset::kDone;
  });
}

TVSET_EXPORT int screensaver_set_timeout(int seconds) {
  return tvset::PlatformCall(
      "screensaver_set_timeout", tvset::kRefused, [&](tvset::Set& set) -> int {
        return set.screen_saver().SetTimeout(seconds) ? tvset::kDone : tvset::kBadParameter;
      });
}

TVSET_EXPORT int screensaver_reset_timeout(void) {
  return tvset::PlatformCall("screensaver_reset_timeout", tvset::kRefused,
                             [](tvset::Set& set) -> int {
                               set.screen_saver().ResetTimeout();
                               return tvset::kDone;
                             });
}
