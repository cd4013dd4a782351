// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stddef.h>

#include "XW_Extension.h"

#ifdef __cplusplus
extern "C" {
#endif

#define XW_MESSAGING_INTERFACE_2 "XW_MessagingInterface_2"

typedef void (*XW_HandleBinaryMessageCallback)(XW_Instance instance, const char* message,
                                               const size_t size);

// Text and binary messages. Sizes are bytes.
typedef struct XW_MessagingInterface_2 {
  void (*Register)(XW_Extension extension, XW_HandleMessageCallback handle_message);
  void (*PostMessage)(XW_Instance instance, const char* message);
  // The name's spelling is part of the interface.
  void (*RegisterBinaryMesssageCallback)(XW_Extension extension,
                                         XW_HandleBinaryMessageCallback handle_message);
  void (*PostBinaryMessage)(XW_Instance instance, const char* message, size_t size);
} XW_MessagingInterface_2;

#ifdef __cplusplus
}  // extern "C"
#endif
