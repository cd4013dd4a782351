// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Running applications. A context is a snapshot under a number of its own, so one that was
// destroyed or invented is answered with -22. A set that cannot be started: -5.
#include <cstring>

#include <app_manager.h>
#include <app_manager_extension.h>

#include "functions/handles.h"
#include "functions/platform_call.h"

namespace tvset {
namespace {

constexpr int kNone = APP_MANAGER_ERROR_NONE;
constexpr int kBadParameter = APP_MANAGER_ERROR_INVALID_PARAMETER;
constexpr int kPlatformFailed = APP_MANAGER_ERROR_IO_ERROR;

// `read(RunningApplication*)` fills the snapshot, and answers false when there is no such
// application.
template <typename Read>
int MakeContext(app_context_h* context, Read&& read) {
  void* const handle =
      AppContexts().Add([&read](RunningApplication& snapshot) -> bool { return read(&snapshot); });
  if (handle == nullptr) return APP_MANAGER_ERROR_NO_SUCH_APP;
  *context = static_cast<app_context_h>(handle);
  return kNone;
}

// Takes `read(const RunningApplication&)` to the context's snapshot; it answers a code.
template <typename Read>
int WithContext(const char* function, app_context_h context, const void* out,
                Read&& read) noexcept {
  return PlatformCall(function, kPlatformFailed, [&](Set&) -> int {
    int result = kBadParameter;
    if (out == nullptr) return result;
    AppContexts().Read(context, [&](const RunningApplication& snapshot) {
      result = read(snapshot);
      return true;
    });
    return result;
  });
}

}  // namespace

HandleTable<RunningApplication>& AppContexts() {
  static auto* const table = new HandleTable<RunningApplication>(1);
  return *table;
}

}  // namespace tvset

TVSET_EXPORT int app_manager_get_focused_app_context(app_context_h* app_context) {
  return tvset::PlatformCall(
      "app_manager_get_focused_app_context", tvset::kPlatformFailed, [&](tvset::Set& set) -> int {
        if (app_context == nullptr) return tvset::kBadParameter;
        return tvset::MakeContext(app_context, [&](tvset::RunningApplication* snapshot) {
          return set.applications().ReadFocused(snapshot);
        });
      });
}

TVSET_EXPORT int app_manager_get_app_context(const char* app_id, app_context_h* app_context) {
  return tvset::PlatformCall(
      "app_manager_get_app_context", tvset::kPlatformFailed, [&](tvset::Set& set) -> int {
        if (app_id == nullptr || app_context == nullptr) return tvset::kBadParameter;
        return tvset::MakeContext(app_context, [&](tvset::RunningApplication* snapshot) {
          return set.applications().ReadRunning(app_id, snapshot);
        });
      });
}

TVSET_EXPORT int app_context_get_app_id(app_context_h app_context, char** app_id) {
  return tvset::WithContext("app_context_get_app_id", app_context, app_id,
                            [&](const tvset::RunningApplication& application) -> int {
                              char* copy = strdup(application.id.c_str());
                              if (copy == nullptr) return APP_MANAGER_ERROR_OUT_OF_MEMORY;
                              *app_id = copy;
                              return tvset::kNone;
                            });
}

TVSET_EXPORT int app_context_get_pid(app_context_h app_context, pid_t* pid) {
  return tvset::WithContext("app_context_get_pid", app_context, pid,
                            [&](const tvset::RunningApplication& application) -> int {
                              *pid = application.pid;
                              return tvset::kNone;
                            });
}

TVSET_EXPORT int app_context_get_app_state(app_context_h app_context, app_state_e* state) {
  return tvset::WithContext("app_context_get_app_state", app_context, state,
                            [&](const tvset::RunningApplication& application) -> int {
                              *state = static_cast<app_state_e>(application.state);
                              return tvset::kNone;
                            });
}

TVSET_EXPORT int app_context_destroy(app_context_h app_context) {
  return tvset::PlatformCall(
      "app_context_destroy", tvset::kPlatformFailed, [&](tvset::Set&) -> int {
        const bool removed =
            tvset::AppContexts().Remove(app_context, [](tvset::RunningApplication&) {});
        return removed ? tvset::kNone : tvset::kBadParameter;
      });
}
