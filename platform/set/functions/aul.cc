// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Which application a process belongs to: the one that the process was last launched for.
#include <algorithm>
#include <cstring>

#include <aul.h>

#include "functions/platform_call.h"

// A buffer without room for the terminating zero is refused as a NULL one is.
TVSET_EXPORT int aul_app_get_appid_bypid(int pid, char* appid, int len) {
  return tvset::PlatformCall("aul_app_get_appid_bypid", AUL_R_ERROR, [&](tvset::Set& set) -> int {
    if (pid <= 0 || appid == nullptr || len <= 0) return AUL_R_EINVAL;
    const std::string id = set.applications().IdOfPid(pid);
    if (id.empty()) return AUL_R_ERROR;
    const size_t size = std::min(id.size(), static_cast<size_t>(len) - 1);
    std::memcpy(appid, id.data(), size);
    appid[size] = '\0';
    return AUL_R_OK;
  });
}
