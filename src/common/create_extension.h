// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "common/extension.h"

// Makes the library's extension object with its name and script text set; the glue owns what it
// returns. Runs once, on the extension thread, while the host initialises the library. Null and an
// exception both end the initialisation.
common::Extension* CreateExtension();
