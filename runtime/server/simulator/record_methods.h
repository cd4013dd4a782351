// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "base/json.h"
#include "server/records/journal.h"
#include "server/simulator/api.h"

namespace orvane::server {

// Adds log.…, trace.…, console.… and explain.list. Borrows the journal. `app` and `profile` are for
// the session's file.
void AddRecordMethods(Api& api, Journal& journal, const Json& app,
                      std::function<std::string()> profile);

}  // namespace orvane::server
