// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Needs a function that nobody has.

#include "support.h"

extern "C" int OrvaneTestFunctionThatNobodyDefines();

int32_t XW_Initialize(XW_Extension, XW_GetInterface) {
  return OrvaneTestFunctionThatNobodyDefines();
}
