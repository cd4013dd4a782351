// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/web_application.h"

namespace orvane::cli {

// The application whose scripts run when none is named: it has a data folder of its own, and the
// one privilege that a first try needs, to register keys of the remote control. What needs more is
// refused, with the line that a config.xml would need.
app::WebApplication ScratchApplication();

}  // namespace orvane::cli
