// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Prefixes that a settings key begins with. They say how long the value lives.

#define VCONF_PREFIX_DB "db/"         /* kept over restarts */
#define VCONF_PREFIX_FILE "file/"     /* kept over restarts */
#define VCONF_PREFIX_MEMORY "memory/" /* lost at a restart, shared by all processes */
