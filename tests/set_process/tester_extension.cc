// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// An extension that does what its messages say, published as example.tester.
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <XW_Extension.h>
#include <XW_Extension_SyncMessage.h>
#include <dlog.h>

namespace {

const XW_MessagingInterface* g_messaging = nullptr;
const XW_Internal_SyncMessagingInterface* g_sync = nullptr;

void Log(const std::string& text) { dlog_print(DLOG_INFO, "TESTER", "%s", text.c_str()); }

// From four threads, a quarter each.
void Flood(int lines) {
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([=] {
      for (int i = thread; i < lines; i += 4) Log("line " + std::to_string(i));
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// From a thread of its own, in order, while the extension thread goes on.
void PostMany(XW_Instance instance, int count) {
  std::thread([=] {
    for (int i = 0; i < count; ++i) {
      g_messaging->PostMessage(instance, std::to_string(i).c_str());
    }
  }).join();
}

int NumberIn(const std::string& text) {
  return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

void Do(XW_Instance instance, const std::string& message) {
  const size_t colon = message.find(':');
  const std::string verb = message.substr(0, colon);
  const std::string rest = colon == std::string::npos ? "" : message.substr(colon + 1);
  if (verb == "abort") std::abort();
  while (verb == "hang") pause();
  if (verb == "flood") Flood(NumberIn(rest));
  if (verb == "post") PostMany(instance, NumberIn(rest));
  if (verb == "bytes") g_messaging->PostMessage(instance, "not \xff utf-8");
}

void HandleSync(XW_Instance instance, const char* message) {
  Do(instance, message);
  const std::string reply = std::string(message) == "long" ? std::string(size_t{17} << 20, 'x')
                                                           : std::string("did ") + message;
  if (std::string(message) != "silence") g_sync->SetSyncReply(instance, reply.c_str());
}

void HandlePost(XW_Instance instance, const char* message) {
  Do(instance, message);
  g_messaging->PostMessage(instance, (std::string("got ") + message).c_str());
}

void Created(XW_Instance) { Log("created"); }
void Destroyed(XW_Instance) { Log("destroyed"); }

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  const auto* core = static_cast<const XW_CoreInterface*>(get_interface(XW_CORE_INTERFACE));
  g_messaging = static_cast<const XW_MessagingInterface*>(get_interface(XW_MESSAGING_INTERFACE));
  g_sync = static_cast<const XW_Internal_SyncMessagingInterface*>(
      get_interface(XW_INTERNAL_SYNC_MESSAGING_INTERFACE));
  core->SetExtensionName(extension, "example.tester");
  core->SetJavaScriptAPI(extension, "exports.here = true;");
  core->RegisterInstanceCallbacks(extension, Created, Destroyed);
  g_messaging->Register(extension, HandlePost);
  g_sync->Register(extension, HandleSync);
  return XW_OK;
}
