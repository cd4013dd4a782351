// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The names of the platform's settings keys.
#include <vconf-internal-keys.h>
