// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The JSON library, with this library's own way to fail: reading a value as a type that it is not,
// or looking for a member in a value that is no object, logs the assertion and ends the process.
//
// Every source that uses JSON includes this first, since the framework's headers bring the JSON
// library along, and the first inclusion decides.

#include "common/assertion.h"

#ifdef PICOJSON_ASSERT
#error "Include common/json.h before the JSON library and the framework's headers"
#endif

#define PICOJSON_ASSERT(expression) LOG_ASSERT(expression)

#include <picojson.h>
