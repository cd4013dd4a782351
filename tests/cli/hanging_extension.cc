// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// An extension whose initialisation never returns.
#include <unistd.h>

#include <XW_Extension.h>

int32_t XW_Initialize(XW_Extension, XW_GetInterface) {
  for (;;) pause();
}
