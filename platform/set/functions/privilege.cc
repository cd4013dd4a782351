// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Whether an application declares a privilege in its config.xml. -5: the set cannot be started.
#include <algorithm>

#include <dlog.h>
#include <privilege.h>

#include "functions/platform_call.h"

namespace tvset {
namespace {

constexpr int kGranted = 0;
constexpr int kNoSuchApplication = -3;
constexpr int kPlatformFailed = -5;
constexpr int kNotGranted = -13;
constexpr int kBadParameter = -22;

void ExplainRefusal(Set& set, const Application& application, const std::string& privilege) {
  set.log().WriteRefusal(application.id + " has not the privilege " + privilege +
                         ": its config.xml lacks the line <tizen:privilege name=\"" + privilege +
                         "\"/>");
}

}  // namespace
}  // namespace tvset

TVSET_EXPORT int privilege_check_application(const char* app_id, const char* privilege) {
  return tvset::PlatformCall(
      "privilege_check_application", tvset::kPlatformFailed, [&](tvset::Set& set) -> int {
        if (app_id == nullptr || privilege == nullptr) return tvset::kBadParameter;
        const std::optional<tvset::Application> application = set.applications().Find(app_id);
        if (!application) return tvset::kNoSuchApplication;
        const auto& granted = application->privileges;
        if (std::find(granted.begin(), granted.end(), privilege) != granted.end()) {
          return tvset::kGranted;
        }
        tvset::ExplainRefusal(set, *application, privilege);
        return tvset::kNotGranted;
      });
}
