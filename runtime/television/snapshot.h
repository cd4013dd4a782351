// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <picojson.h>

#include "television/installed_applications.h"
#include "television/shifted_clock.h"
#include "tvset/set.h"

namespace orvane::television {

// What brings a set that was just started back to where another one was: the process that held that
// one has died. Settings and the applications' data are in files and not part of it.

// Any thread.
picojson::value TakeSnapshot(tvset::Set& set, const InstalledApplications& applications,
                             const ShiftedClock& clock);

// `main_app` gets this process's id. What cannot be restored is left out, one warning each: a
// damaged snapshot must not keep the set from starting.
std::vector<std::string> RestoreSnapshot(const picojson::value& snapshot,
                                         const std::string& main_app, pid_t main_pid,
                                         tvset::Set& set, InstalledApplications& applications,
                                         ShiftedClock& clock);

}  // namespace orvane::television
