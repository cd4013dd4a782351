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
// one has died, or may die any moment. Settings and the applications' data are in files and not
// part of it; instances, and with them what pages had asked the library for, are lost. Who takes
// one and who restores it run the same build: its JSON is nobody else's business, but foreign text
// all the same, since it comes over a socket from a process that a bad message may have damaged.
//
// Holds: the profile in use and the features changed since, what is installed besides, what runs
// and in which order it was raised, focus, windows, on-screen keyboard, key grabs, faults with
// their hits, and the screen saver with its owner and wait, by the clock of the machine.

// Any thread. The parts are read one after the other, while the set may change.
Json TakeSnapshot(tvset::Set& set, const SetState& state, const ShiftedClock& clock);

// For a set that was just started, with `main_app` installed and launched on it; that gets
// `main_pid` as its process if it ran, and is terminated if it did not. Moves the clock as far as
// the other one was moved. The set's observers hear of every change. On the extension thread.
//
// Gives a warning, a sentence, for each part that cannot be restored; that part is left out or half
// done: a damaged snapshot must not keep the set from starting. Throws nothing.
std::vector<std::string> RestoreSnapshot(const Json& snapshot, const std::string& main_app,
                                         pid_t main_pid, tvset::Set& set, ShiftedClock& clock);

}  // namespace orvane::television
