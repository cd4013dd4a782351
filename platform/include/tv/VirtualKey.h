// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Injection of remote-control keys. Each call answers 0 for success.

#ifdef __cplusplus
extern "C" {
#endif

int VirtualKey_Initialize(int mode);
// Mode 2 presses and releases the key in one call.
int VirtualKey_Send_KeyCode(int key_code, int mode);

#ifdef __cplusplus
}  // extern "C"
#endif
