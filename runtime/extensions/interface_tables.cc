// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/interface_tables.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>

#include "XW_Extension.h"
#include "XW_Extension_EntryPoints.h"
#include "XW_Extension_Message_2.h"
#include "XW_Extension_Permissions.h"
#include "XW_Extension_Runtime.h"
#include "XW_Extension_SyncMessage.h"
#include "base/json.h"
#include "extensions/callback_frame.h"
#include "extensions/extension.h"
#include "extensions/host_context.h"
#include "extensions/instance_state.h"
#include "extensions/registry.h"
#include "extensions/warnings.h"

namespace orvane::extensions {
namespace {

// ---- From the handle in a call to its state, through the guard. ----

// `body(Extension&)` answers for a living extension; the empty value does for any other handle.
template <typename Body>
auto WithExtension(const char* call, XW_Extension handle, Body&& body) {
  using Result = std::invoke_result_t<Body, Extension&>;
  return GuardCall(call, [&]() -> Result {
    const std::shared_ptr<Extension> extension = Registry::Process().extensions().Find(handle);
    if (extension != nullptr) return body(*extension);
    WarnAboutDeadHandle(HandleKind::kExtension, call, handle);
    return Result();
  });
}

// The same for an instance. An extension nearly always speaks about the instance whose callback
// runs on this thread, and that one is at hand.
template <typename Body>
auto WithInstance(const char* call, XW_Instance handle, Body&& body) {
  using Result = std::invoke_result_t<Body, InstanceState&>;
  return GuardCall(call, [&]() -> Result {
    const CallbackFrame* frame = CallbackFrame::innermost();
    InstanceState* current = frame != nullptr ? frame->instance() : nullptr;
    if (current != nullptr && current->handle() == handle && current->is_alive()) {
      return body(*current);
    }
    const std::shared_ptr<InstanceState> instance = Registry::Process().instances().Find(handle);
    if (instance != nullptr) return body(*instance);
    WarnAboutDeadHandle(HandleKind::kInstance, call, handle);
    return Result();
  });
}

// Changes what the extension says about itself, if its XW_Initialize runs. Whether it did.
template <typename Change>
bool Configure(const char* call, XW_Extension handle, Change&& change) {
  return WithExtension(call, handle, [&](Extension& extension) {
    if (extension.Configure(change)) return true;
    WarnAboutCall(extension, call,
                  "counts only while XW_Initialize runs; the call did nothing. Move it there.");
    return false;
  });
}

constexpr char kNullText[] = "was called with NULL, and did nothing. Pass a text.";

// ---- XW_CoreInterface_1 ----

void SetExtensionName(XW_Extension extension, const char* name) {
  constexpr char kCall[] = "SetExtensionName";
  if (name == nullptr) return WarnAboutCall(kCall, kNullText);
  Configure(kCall, extension, [&](Registration& registration) { registration.name = name; });
}

void SetJavaScriptApi(XW_Extension extension, const char* api) {
  constexpr char kCall[] = "SetJavaScriptAPI";
  if (api == nullptr) return WarnAboutCall(kCall, kNullText);
  Configure(kCall, extension, [&](Registration& registration) { registration.api = api; });
}

void RegisterInstanceCallbacks(XW_Extension extension, XW_CreatedInstanceCallback created,
                               XW_DestroyedInstanceCallback destroyed) {
  Configure("RegisterInstanceCallbacks", extension, [&](Registration& registration) {
    registration.created = created;
    registration.destroyed = destroyed;
  });
}

void RegisterShutdownCallback(XW_Extension extension, XW_ShutdownCallback shutdown) {
  Configure("RegisterShutdownCallback", extension,
            [&](Registration& registration) { registration.shutdown = shutdown; });
}

void SetInstanceData(XW_Instance instance, void* data) {
  WithInstance("SetInstanceData", instance, [&](InstanceState& state) { state.set_data(data); });
}

void* GetInstanceData(XW_Instance instance) {
  return WithInstance("GetInstanceData", instance,
                      [](InstanceState& state) { return state.data(); });
}

// ---- XW_MessagingInterface_1 and _2 ----

// `deliver(InstanceClient&)` hands the message to the page.
template <typename Deliver>
void Post(const char* call, XW_Instance handle, Deliver&& deliver) {
  WithInstance(call, handle, [&](InstanceState& instance) {
    if (!instance.Post(deliver)) WarnAboutDeadHandle(HandleKind::kInstance, call, handle);
  });
}

void RegisterMessageHandler(XW_Extension extension, XW_HandleMessageCallback handler) {
  Configure("Register (messages)", extension,
            [&](Registration& registration) { registration.handle_message = handler; });
}

void PostMessage(XW_Instance instance, const char* message) {
  constexpr char kCall[] = "PostMessage";
  if (message == nullptr) return WarnAboutCall(kCall, kNullText);
  Post(kCall, instance, [&](InstanceClient& client) { client.OnMessage(message); });
}

void RegisterBinaryMessageHandler(XW_Extension extension, XW_HandleBinaryMessageCallback handler) {
  Configure("RegisterBinaryMesssageCallback", extension,
            [&](Registration& registration) { registration.handle_binary_message = handler; });
}

void PostBinaryMessage(XW_Instance instance, const char* message, size_t size) {
  constexpr char kCall[] = "PostBinaryMessage";
  if (message == nullptr && size != 0) {
    return WarnAboutCall(kCall,
                         "was called with NULL and a size, and did nothing. Pass the bytes.");
  }
  Post(kCall, instance,
       [&](InstanceClient& client) { client.OnBinaryMessage(std::string_view(message, size)); });
}

// ---- XW_Internal_SyncMessagingInterface_1 ----

void RegisterSyncMessageHandler(XW_Extension extension, XW_HandleSyncMessageCallback handler) {
  Configure("Register (synchronous messages)", extension,
            [&](Registration& registration) { registration.handle_sync_message = handler; });
}

void SetSyncReply(XW_Instance instance, const char* reply) {
  constexpr char kCall[] = "SetSyncReply";
  if (reply == nullptr) {
    WarnAboutCall(kCall, "was called with NULL, which counts as an empty reply. Pass a text.");
    reply = "";
  }
  WithInstance(kCall, instance, [&](InstanceState& state) {
    const SyncCalls::Effect effect = state.sync_calls().Reply(reply);
    if (effect == SyncCalls::Effect::kTaken) return;
    const char* const why = effect == SyncCalls::Effect::kSecondReply
                                ? "the message has a reply already; the second one is ignored: "
                                : "no synchronous message waits for a reply; it is ignored: ";
    WarnAboutCall(state.extension(), kCall, why + Excerpt(reply));
  });
}

// ---- XW_Internal_EntryPointsInterface_1 ----

void SetExtraJsEntryPoints(XW_Extension extension, const char** entry_points) {
  constexpr char kCall[] = "SetExtraJSEntryPoints";
  if (entry_points == nullptr) {
    return WarnAboutCall(
        kCall, "was called with NULL, and did nothing. Pass an array that ends with NULL.");
  }
  Configure(kCall, extension, [&](Registration& registration) {
    registration.entry_points.clear();
    for (const char** name = entry_points; *name != nullptr; ++name) {
      registration.entry_points.emplace_back(*name);
    }
  });
}

// ---- XW_Internal_RuntimeInterface_1 ----

// Empty for an unknown key. The same during and after XW_Initialize.
std::string RuntimeVariable(const Extension& extension, const char* key) {
  if (std::strcmp(key, "extension_path") == 0) return base::JsonText(extension.path().string());
  if (std::strcmp(key, "app_id") == 0) return base::JsonText(extension.context().options().app_id);
  return std::string();
}

void GetRuntimeVariableString(XW_Extension extension, const char* key, char* value,
                              size_t value_size) {
  constexpr char kCall[] = "GetRuntimeVariableString";
  WithExtension(kCall, extension, [&](Extension& state) {
    if (value == nullptr || value_size == 0) return;
    value[0] = '\0';
    if (key == nullptr) {
      return WarnAboutCall(state, kCall, "was called without a key, and gave an empty text.");
    }
    const std::string text = RuntimeVariable(state, key);
    const size_t length = std::min(text.size(), value_size - 1);
    std::memcpy(value, text.data(), length);
    value[length] = '\0';
  });
}

// ---- XW_Internal_PermissionsInterface_1 ----

int CheckApiAccessControl(XW_Extension extension, const char* api_name) {
  constexpr char kCall[] = "CheckAPIAccessControl";
  const bool granted = WithExtension(kCall, extension, [&](Extension& state) {
    if (api_name == nullptr) {
      WarnAboutCall(state, kCall, "was called without an API's name; access is refused.");
      return false;
    }
    CallGate::Pass pass(state.context().calls_out());
    const auto& access_check = state.context().options().access_check;
    return pass && (!access_check || access_check(api_name));
  });
  return granted ? XW_OK : XW_ERROR;
}

int RegisterPermissions(XW_Extension extension, const char* permission_table) {
  constexpr char kCall[] = "RegisterPermissions";
  if (permission_table == nullptr) {
    WarnAboutCall(kCall, kNullText);
    return XW_ERROR;
  }
  const bool stored = Configure(kCall, extension, [&](Registration& registration) {
    registration.permissions.emplace_back(permission_table);
  });
  return stored ? XW_OK : XW_ERROR;
}

// ---- The tables. ----

constexpr XW_CoreInterface_1 kCore = {SetExtensionName,          SetJavaScriptApi,
                                      RegisterInstanceCallbacks, RegisterShutdownCallback,
                                      SetInstanceData,           GetInstanceData};
constexpr XW_MessagingInterface_1 kMessaging1 = {RegisterMessageHandler, PostMessage};
constexpr XW_MessagingInterface_2 kMessaging2 = {RegisterMessageHandler, PostMessage,
                                                 RegisterBinaryMessageHandler, PostBinaryMessage};
constexpr XW_Internal_SyncMessagingInterface_1 kSyncMessaging = {RegisterSyncMessageHandler,
                                                                 SetSyncReply};
constexpr XW_Internal_EntryPointsInterface_1 kEntryPoints = {SetExtraJsEntryPoints};
constexpr XW_Internal_RuntimeInterface_1 kRuntime = {GetRuntimeVariableString};
constexpr XW_Internal_PermissionsInterface_1 kPermissions = {CheckApiAccessControl,
                                                             RegisterPermissions};

struct NamedTable {
  const char* name;
  const void* table;
};

constexpr NamedTable kTables[] = {
    {XW_CORE_INTERFACE_1, &kCore},
    {XW_MESSAGING_INTERFACE_1, &kMessaging1},
    {XW_MESSAGING_INTERFACE_2, &kMessaging2},
    {XW_INTERNAL_SYNC_MESSAGING_INTERFACE_1, &kSyncMessaging},
    {XW_INTERNAL_ENTRY_POINTS_INTERFACE_1, &kEntryPoints},
    {XW_INTERNAL_RUNTIME_INTERFACE_1, &kRuntime},
    {XW_INTERNAL_PERMISSIONS_INTERFACE_1, &kPermissions},
};

const void* FindTable(const char* name) {
  for (const NamedTable& entry : kTables) {
    if (std::strcmp(entry.name, name) == 0) return entry.table;
  }
  return nullptr;
}

std::string UnknownInterfaceText(const char* name) {
  std::string text = "there is no interface " + base::JsonText(name) + "; known are";
  const char* separator = " ";
  for (const NamedTable& entry : kTables) {
    text += separator + std::string(entry.name);
    separator = ", ";
  }
  return text + ".";
}

}  // namespace

const void* GetInterface(const char* interface_name) {
  constexpr char kCall[] = "XW_GetInterface";
  return GuardCall(kCall, [&] {
    const void* table = interface_name != nullptr ? FindTable(interface_name) : nullptr;
    if (table == nullptr) {
      WarnAboutCall(kCall,
                    interface_name != nullptr ? UnknownInterfaceText(interface_name) : kNullText);
    }
    return table;
  });
}

}  // namespace orvane::extensions
