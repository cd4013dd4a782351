// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "XW_Extension.h"
#include "XW_Extension_EntryPoints.h"
#include "XW_Extension_Runtime.h"
#include "XW_Extension_SyncMessage.h"

namespace orvane::test {

// The other side of the C extension interface, for one extension: it writes down what the extension
// tells it, and calls the extension as a web runtime does. One at a time in a process, since the
// interface's functions carry no context. All methods belong to the test's thread, which is the
// extension thread; posts come from any thread.
class FakeHost {
 public:
  // Of this extension's messages, in their order.
  using Messages = std::vector<std::string>;

  FakeHost();
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  // The interface is not known to the host from now on.
  void Withhold(const std::string& interface_name) { withheld_.insert(interface_name); }
  void SetVariable(const std::string& key, const std::string& json) { variables_[key] = json; }

  // Runs the extension's entry point; what it sets meanwhile counts.
  int32_t Initialize(XW_Initialize_Func entry_point);
  void ShutDown();

  const std::string& extension_name() const { return name_; }
  const std::string& script() const { return script_; }
  const std::vector<std::string>& entry_points() const { return entry_points_; }

  XW_Instance Create();
  // Returns what the extension posted to the instance, to its very end, and nobody has awaited.
  Messages Destroy(XW_Instance instance);
  // What the extension bound to the handle.
  void* data(XW_Instance instance) const;

  // Empty when there was no reply before the handler returned.
  std::string SendSync(XW_Instance instance, const std::string& message);
  void Send(XW_Instance instance, const std::string& message);

  // Waits for the next message that the extension posts to the instance.
  std::string AwaitPost(XW_Instance instance);
  // Those that nobody has awaited.
  Messages posts(XW_Instance instance) const;
  // Posts to handles that were not alive.
  int dropped_posts() const;

 private:
  static const void* Lookup(const char* interface_name);
  static void SetExtensionName(XW_Extension extension, const char* name);
  static void SetJavaScriptAPI(XW_Extension extension, const char* api);
  static void RegisterInstanceCallbacks(XW_Extension extension, XW_CreatedInstanceCallback created,
                                        XW_DestroyedInstanceCallback destroyed);
  static void RegisterShutdownCallback(XW_Extension extension, XW_ShutdownCallback shutdown);
  static void SetInstanceData(XW_Instance instance, void* data);
  static void* GetInstanceData(XW_Instance instance);
  static void Register(XW_Extension extension, XW_HandleMessageCallback handle_message);
  static void PostMessage(XW_Instance instance, const char* message);
  static void RegisterSync(XW_Extension extension, XW_HandleMessageCallback handle_message);
  static void SetSyncReply(XW_Instance instance, const char* reply);
  static void SetExtraJSEntryPoints(XW_Extension extension, const char** entry_points);
  static void GetRuntimeVariableString(XW_Extension extension, const char* key, char* value,
                                       size_t size);

  std::set<std::string> withheld_;
  std::map<std::string, std::string> variables_;
  bool initializing_ = false;
  std::string name_;
  std::string script_;
  std::vector<std::string> entry_points_;
  XW_CreatedInstanceCallback created_ = nullptr;
  XW_DestroyedInstanceCallback destroyed_ = nullptr;
  XW_ShutdownCallback shutdown_ = nullptr;
  XW_HandleMessageCallback handle_message_ = nullptr;
  XW_HandleMessageCallback handle_sync_message_ = nullptr;
  XW_Instance last_instance_ = 0;
  std::map<XW_Instance, void*> data_;
  std::string reply_;

  mutable std::mutex mutex_;
  std::condition_variable posted_;
  std::map<XW_Instance, Messages> posts_;  // guarded by mutex_; of the instances alive
  int dropped_posts_ = 0;                  // guarded by mutex_
};

}  // namespace orvane::test
