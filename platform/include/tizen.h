// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The platform's base header: common types and error codes.
#include <tizen_error.h>
#include <tizen_type.h>
