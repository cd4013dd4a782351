// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// An extension that does what the page under test asks for. A message is a verb, a colon and the
// rest:
//   reply:TEXT        answers TEXT                          (synchronous)
//   none:             does not answer                       (synchronous)
//   events:           answers what happened in this process (synchronous)
//   post:TEXT         posts TEXT; also answers "" when synchronous
//   thread:TEXT       as post, from another thread
//   destroyed:TEXT    posts TEXT when the instance is destroyed; answers ""
// Anything else is answered, or posted, as it came. Bytes are posted back in reverse order.
#include <algorithm>
#include <map>
#include <string>
#include <thread>

#include "XW_Extension.h"
#include "XW_Extension_EntryPoints.h"
#include "XW_Extension_Message_2.h"
#include "XW_Extension_SyncMessage.h"

extern "C" const char kTestExtensionScript[];  // test_extension.js

namespace {

const XW_CoreInterface* g_core;
const XW_MessagingInterface_2* g_messaging;
const XW_Internal_SyncMessagingInterface_1* g_sync;
std::string g_events;
std::map<XW_Instance, std::string> g_last_words;

bool Post(XW_Instance instance, const std::string& verb, const std::string& rest) {
  if (verb == "post") {
    g_messaging->PostMessage(instance, rest.c_str());
  } else if (verb == "thread") {
    std::thread([=] { g_messaging->PostMessage(instance, rest.c_str()); }).join();
  } else {
    return false;
  }
  return true;
}

void Split(const std::string& message, std::string* verb, std::string* rest) {
  const size_t colon = std::min(message.find(':'), message.size());
  *verb = message.substr(0, colon);
  *rest = message.substr(std::min(colon + 1, message.size()));
}

void HandleSyncMessage(XW_Instance instance, const char* message) {
  std::string verb, rest;
  Split(message, &verb, &rest);
  if (verb == "none") return;
  if (verb == "destroyed") g_last_words[instance] = rest;
  const bool posted = Post(instance, verb, rest);
  const std::string reply = verb == "reply"                 ? rest
                            : verb == "events"              ? g_events
                            : posted || verb == "destroyed" ? ""
                                                            : message;
  g_sync->SetSyncReply(instance, reply.c_str());
}

void HandleMessage(XW_Instance instance, const char* message) {
  std::string verb, rest;
  Split(message, &verb, &rest);
  if (!Post(instance, verb, rest)) g_messaging->PostMessage(instance, message);
}

void HandleBytes(XW_Instance instance, const char* bytes, const size_t size) {
  std::string reversed(bytes, size);
  std::reverse(reversed.begin(), reversed.end());
  g_messaging->PostBinaryMessage(instance, reversed.data(), reversed.size());
}

void Created(XW_Instance) { g_events += "created "; }

void Destroyed(XW_Instance instance) {
  g_events += "destroyed ";
  const auto words = g_last_words.find(instance);
  if (words != g_last_words.end()) g_messaging->PostMessage(instance, words->second.c_str());
}

}  // namespace

extern "C" XW_EXPORT int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_events.clear();  // the library may still be in memory from the host before
  g_core = static_cast<const XW_CoreInterface*>(get_interface(XW_CORE_INTERFACE));
  g_messaging =
      static_cast<const XW_MessagingInterface_2*>(get_interface(XW_MESSAGING_INTERFACE_2));
  g_sync = static_cast<const XW_Internal_SyncMessagingInterface_1*>(
      get_interface(XW_INTERNAL_SYNC_MESSAGING_INTERFACE_1));
  g_core->SetExtensionName(extension, TEST_EXTENSION_NAME);
  g_core->SetJavaScriptAPI(extension, kTestExtensionScript);
  g_core->RegisterInstanceCallbacks(extension, Created, Destroyed);
  g_messaging->Register(extension, HandleMessage);
  g_messaging->RegisterBinaryMesssageCallback(extension, HandleBytes);
  g_sync->Register(extension, HandleSyncMessage);
#ifdef TEST_EXTENSION_ENTRY_POINT
  const auto* entry_points = static_cast<const XW_Internal_EntryPointsInterface_1*>(
      get_interface(XW_INTERNAL_ENTRY_POINTS_INTERFACE_1));
  const char* names[] = {TEST_EXTENSION_ENTRY_POINT, nullptr};
  entry_points->SetExtraJSEntryPoints(extension, names);
#endif
  return XW_OK;
}
