// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XW_Extension.h"

#ifdef __cplusplus
extern "C" {
#endif

#define XW_INTERNAL_SYNC_MESSAGING_INTERFACE_1 "XW_InternalSyncMessagingInterface_1"
#define XW_INTERNAL_SYNC_MESSAGING_INTERFACE XW_INTERNAL_SYNC_MESSAGING_INTERFACE_1

typedef void (*XW_HandleSyncMessageCallback)(XW_Instance instance, const char* message);

typedef struct XW_Internal_SyncMessagingInterface_1 {
  void (*Register)(XW_Extension extension, XW_HandleSyncMessageCallback handle_sync_message);
  // Before or after the handler returns; the page waits for it.
  void (*SetSyncReply)(XW_Instance instance, const char* reply);
} XW_Internal_SyncMessagingInterface_1;

typedef XW_Internal_SyncMessagingInterface_1 XW_Internal_SyncMessagingInterface;

#ifdef __cplusplus
}  // extern "C"
#endif
