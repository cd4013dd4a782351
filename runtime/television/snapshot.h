// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "base/json.h"
#include "television/set_state.h"
#include "television/shifted_clock.h"
#include "tvset/set.h"

namespace orvane::television {

// What brings a set that was just started back to where another one was: the process that held that
// one has died. Settings and the applications' data are in files and not part of it. Who takes one
// and who restores it run the same build; its JSON is nobody else's business.

// Any thread.
Json TakeSnapshot(tvset::Set& set, const SetState& state, const ShiftedClock& clock);

// `main_app` gets this process's id. A part that cannot be restored is left out, with a warning: a
// damaged snapshot must not keep the set from starting.
std::vector<std::string> RestoreSnapshot(const Json& snapshot, const std::string& main_app,
                                         pid_t main_pid, tvset::Set& set, ShiftedClock& clock);

}  // namespace orvane::television
