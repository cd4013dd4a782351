// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// What libtvset.so shows to others: the platform's C functions and the control classes.
#define TVSET_EXPORT __attribute__((visibility("default")))
