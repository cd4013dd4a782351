// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The plain types that every platform header shares.
#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

#include <stdbool.h>
