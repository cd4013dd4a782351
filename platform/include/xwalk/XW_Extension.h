// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The C interface between a web runtime (the host) and an extension: handles, the entry point, and
// the core and messaging tables. The host owns every table (static storage, never freed). Strings
// given to the host are copied before the call returns; strings given to a callback live for the
// call. All callbacks come from one thread, the extension thread. A call with a handle that is not
// alive does nothing.

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define XW_EXPORT __attribute__((visibility("default")))
#else
#define XW_EXPORT
#endif

// Handles are positive when valid.
typedef int32_t XW_Extension;
typedef int32_t XW_Instance;

enum { XW_OK = 0, XW_ERROR = -1 };

// Returns the table of the named interface, or NULL for a name that the host does not know.
typedef const void* (*XW_GetInterface)(const char* interface_name);

typedef int32_t (*XW_Initialize_Func)(XW_Extension extension, XW_GetInterface get_interface);

// What an extension exports. Anything but XW_OK means that the library is not used and is unloaded.
XW_EXPORT int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface);

typedef void (*XW_CreatedInstanceCallback)(XW_Instance instance);
typedef void (*XW_DestroyedInstanceCallback)(XW_Instance instance);
typedef void (*XW_ShutdownCallback)(XW_Extension extension);
typedef void (*XW_HandleMessageCallback)(XW_Instance instance, const char* message);

#define XW_CORE_INTERFACE_1 "XW_CoreInterface_1"
#define XW_CORE_INTERFACE XW_CORE_INTERFACE_1

// The Set and Register members count only while the extension's XW_Initialize runs.
typedef struct XW_CoreInterface_1 {
  void (*SetExtensionName)(XW_Extension extension, const char* name);
  void (*SetJavaScriptAPI)(XW_Extension extension, const char* api);
  // Either callback may be NULL.
  void (*RegisterInstanceCallbacks)(XW_Extension extension, XW_CreatedInstanceCallback created,
                                    XW_DestroyedInstanceCallback destroyed);
  void (*RegisterShutdownCallback)(XW_Extension extension, XW_ShutdownCallback shutdown);
  void (*SetInstanceData)(XW_Instance instance, void* data);
  void* (*GetInstanceData)(XW_Instance instance);
} XW_CoreInterface_1;

typedef XW_CoreInterface_1 XW_CoreInterface;

#define XW_MESSAGING_INTERFACE_1 "XW_MessagingInterface_1"
#define XW_MESSAGING_INTERFACE XW_MESSAGING_INTERFACE_1

typedef struct XW_MessagingInterface_1 {
  void (*Register)(XW_Extension extension, XW_HandleMessageCallback handle_message);
  // From any thread, until the instance is destroyed.
  void (*PostMessage)(XW_Instance instance, const char* message);
} XW_MessagingInterface_1;

typedef XW_MessagingInterface_1 XW_MessagingInterface;

#ifdef __cplusplus
}  // extern "C"
#endif
