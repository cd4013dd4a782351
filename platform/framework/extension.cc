// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/extension.h"

#include <array>
#include <stdexcept>

#include "common/task_queue.h"
#include "guard.h"
#include "host_tables.h"
#include "json_reader.h"

namespace common {

namespace {

HostTables g_tables;

}  // namespace

const HostTables& Host() { return g_tables; }

namespace {

// The extension whose XW_Initialize runs, or 0.
XW_Extension g_initializing = 0;

constexpr size_t kRuntimeVariableSize = 4096;

template <class Table>
const Table* Lookup(XW_GetInterface get_interface, const char* name) {
  return static_cast<const Table*>(get_interface(name));
}

// Keeps the host's tables. False when one is missing without which no message can be answered.
bool AdoptTables(XW_GetInterface get_interface) {
  HostTables tables;
  tables.core = Lookup<XW_CoreInterface>(get_interface, XW_CORE_INTERFACE);
  tables.messaging = Lookup<XW_MessagingInterface>(get_interface, XW_MESSAGING_INTERFACE);
  tables.sync_messaging = Lookup<XW_Internal_SyncMessagingInterface>(
      get_interface, XW_INTERNAL_SYNC_MESSAGING_INTERFACE);
  tables.entry_points =
      Lookup<XW_Internal_EntryPointsInterface>(get_interface, XW_INTERNAL_ENTRY_POINTS_INTERFACE);
  tables.runtime =
      Lookup<XW_Internal_RuntimeInterface>(get_interface, XW_INTERNAL_RUNTIME_INTERFACE);
  if (tables.core == nullptr || tables.messaging == nullptr || tables.sync_messaging == nullptr) {
    return false;
  }
  // A worker may post for another extension just now: what it reads is not touched without need.
  if (!(tables == Host())) {
    g_tables = tables;
  }
  return true;
}

// Throws where no library of this process was ever initialised by a host.
const XW_CoreInterface& Core() {
  const XW_CoreInterface* const core = Host().core;
  if (core == nullptr) {
    throw std::logic_error("No host has initialised an extension in this process");
  }
  return *core;
}

Instance* InstanceOf(XW_Instance handle) {
  return static_cast<Instance*>(Core().GetInstanceData(handle));
}

void OnInstanceDestroyed(XW_Instance handle) {
  Guarded("OnInstanceDestroyed", [handle] { delete InstanceOf(handle); });
}

void OnMessage(XW_Instance handle, const char* message) {
  Guarded("OnMessage", [handle, message] {
    if (Instance* instance = InstanceOf(handle)) {
      instance->HandleMessage(message);
    }
  });
}

void OnSyncMessage(XW_Instance handle, const char* message) {
  Guarded("OnSyncMessage", [handle, message] {
    if (Instance* instance = InstanceOf(handle)) {
      instance->HandleSyncMessage(message);
    }
  });
}

// The text that `json` stands for; empty for another value, and for text that was cut.
std::string StringFromJson(const char* json) {
  picojson::value value;
  const bool is_string = ReadJson(json, "variable", value).empty() && value.is<std::string>();
  return is_string ? value.get<std::string>() : std::string();
}

// Marks the extension as the one that initialises, for as long as it does.
class InitializationScope {
 public:
  explicit InitializationScope(XW_Extension extension) { g_initializing = extension; }
  ~InitializationScope() { g_initializing = 0; }

  InitializationScope(const InitializationScope&) = delete;
  InitializationScope& operator=(const InitializationScope&) = delete;
};

void RequireInitialization(const char* member) {
  if (g_initializing == 0) {
    throw std::logic_error(std::string(member) + ": only while the extension is initialised");
  }
}

}  // namespace

Extension::Extension() : handle_(g_initializing) {}

Extension::~Extension() { TaskQueue::GetInstance().WaitForCurrent(); }

void Extension::SetExtensionName(const char* name) {
  RequireInitialization("SetExtensionName");
  Core().SetExtensionName(handle_, name);
}

void Extension::SetJavaScriptAPI(const char* api) {
  RequireInitialization("SetJavaScriptAPI");
  Core().SetJavaScriptAPI(handle_, api);
}

void Extension::SetExtraJSEntryPoints(const char** entry_points) {
  RequireInitialization("SetExtraJSEntryPoints");
  if (Host().entry_points != nullptr) {
    Host().entry_points->SetExtraJSEntryPoints(handle_, entry_points);
  }
}

std::string Extension::GetRuntimeVariable(const char* key) const {
  if (Host().runtime == nullptr) {
    return {};
  }
  std::array<char, kRuntimeVariableSize> text{};
  Host().runtime->GetRuntimeVariableString(handle_, key, text.data(), text.size());
  return StringFromJson(text.data());
}

int32_t Extension::XW_Initialize(XW_Extension extension, XW_GetInterface get_interface,
                                 XW_Initialize_Func initialize, XW_CreatedInstanceCallback created,
                                 XW_ShutdownCallback shutdown) {
  return Guarded("XW_Initialize", int32_t{XW_ERROR}, [&]() -> int32_t {
    if (!AdoptTables(get_interface)) {
      FRAMEWORK_LOG_ERROR("extension.cc", "The host lacks the core or a messaging interface");
      return XW_ERROR;
    }
    const InitializationScope scope(extension);
    Core().RegisterInstanceCallbacks(extension, created, OnInstanceDestroyed);
    Core().RegisterShutdownCallback(extension, shutdown);
    Host().messaging->Register(extension, OnMessage);
    Host().sync_messaging->Register(extension, OnSyncMessage);
    return initialize(extension, get_interface);
  });
}

void Extension::OnInstanceCreated(XW_Instance handle, Instance* instance) {
  if (instance == nullptr) {
    return;
  }
  instance->handle_ = handle;
  Core().SetInstanceData(handle, instance);
}

}  // namespace common
