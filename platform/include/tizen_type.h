// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The plain types that every platform header shares.
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>
