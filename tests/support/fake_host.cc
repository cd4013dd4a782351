// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "fake_host.h"

#include <stdlib.h>

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace orvane::test {

namespace {

constexpr XW_Extension kExtension = 7;
// Longer than any reply takes; a test that gets here has failed.
constexpr std::chrono::seconds kPatience(60);

FakeHost* g_host = nullptr;

void Require(bool condition, const char* what) {
  if (!condition) {
    throw std::logic_error(what);
  }
}

}  // namespace

FakeHost::FakeHost() {
  Require(g_host == nullptr, "there is a fake host already");
  g_host = this;
}

FakeHost::~FakeHost() { g_host = nullptr; }

int32_t FakeHost::Initialize(XW_Initialize_Func entry_point) {
  initializing_ = true;
  const int32_t result = entry_point(kExtension, Lookup);
  initializing_ = false;
  return result;
}

void FakeHost::ShutDown() {
  if (shutdown_ != nullptr) {
    shutdown_(kExtension);
  }
}

XW_Instance FakeHost::Create() {
  const XW_Instance instance = ++last_instance_;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    posts_[instance];
  }
  data_[instance] = nullptr;
  if (created_ != nullptr) {
    created_(instance);
  }
  return instance;
}

FakeHost::Messages FakeHost::Destroy(XW_Instance instance) {
  if (destroyed_ != nullptr) {
    destroyed_(instance);
  }
  data_.erase(instance);
  const std::lock_guard<std::mutex> lock(mutex_);
  Messages rest = std::move(posts_[instance]);
  posts_.erase(instance);
  return rest;
}

void* FakeHost::data(XW_Instance instance) const {
  const auto found = data_.find(instance);
  return found == data_.end() ? nullptr : found->second;
}

std::string FakeHost::SendSync(XW_Instance instance, const std::string& message) {
  Require(handle_sync_message_ != nullptr, "the extension takes no synchronous messages");
  reply_.clear();
  handle_sync_message_(instance, message.c_str());
  return reply_;
}

void FakeHost::Send(XW_Instance instance, const std::string& message) {
  Require(handle_message_ != nullptr, "the extension takes no messages");
  handle_message_(instance, message.c_str());
}

std::string FakeHost::AwaitPost(XW_Instance instance) {
  std::unique_lock<std::mutex> lock(mutex_);
  Messages& posts = posts_.at(instance);
  if (!posted_.wait_for(lock, kPatience, [&posts] { return !posts.empty(); })) {
    throw std::runtime_error("no message was posted");
  }
  const std::string message = posts.front();
  posts.erase(posts.begin());
  return message;
}

FakeHost::Messages FakeHost::posts(XW_Instance instance) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = posts_.find(instance);
  return found == posts_.end() ? Messages() : found->second;
}

int FakeHost::dropped_posts() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return dropped_posts_;
}

const void* FakeHost::Lookup(const char* interface_name) {
  static const XW_CoreInterface kCore = {SetExtensionName,          SetJavaScriptAPI,
                                         RegisterInstanceCallbacks, RegisterShutdownCallback,
                                         SetInstanceData,           GetInstanceData};
  static const XW_MessagingInterface kMessaging = {Register, PostMessage};
  static const XW_Internal_SyncMessagingInterface kSync = {RegisterSync, SetSyncReply};
  static const XW_Internal_EntryPointsInterface kEntryPoints = {SetExtraJSEntryPoints};
  static const XW_Internal_RuntimeInterface kRuntime = {GetRuntimeVariableString};
  static const std::map<std::string, const void*> kTables = {
      {XW_CORE_INTERFACE, &kCore},
      {XW_MESSAGING_INTERFACE, &kMessaging},
      {XW_INTERNAL_SYNC_MESSAGING_INTERFACE, &kSync},
      {XW_INTERNAL_ENTRY_POINTS_INTERFACE, &kEntryPoints},
      {XW_INTERNAL_RUNTIME_INTERFACE, &kRuntime}};
  const auto found = kTables.find(interface_name);
  return found == kTables.end() || g_host->withheld_.count(interface_name) != 0 ? nullptr
                                                                                : found->second;
}

void FakeHost::SetExtensionName(XW_Extension extension, const char* name) {
  if (g_host->initializing_ && extension == kExtension) {
    g_host->name_ = name;
  }
}

void FakeHost::SetJavaScriptAPI(XW_Extension extension, const char* api) {
  if (g_host->initializing_ && extension == kExtension) {
    g_host->script_ = api;
  }
}

void FakeHost::RegisterInstanceCallbacks(XW_Extension /*extension*/,
                                         XW_CreatedInstanceCallback created,
                                         XW_DestroyedInstanceCallback destroyed) {
  g_host->created_ = created;
  g_host->destroyed_ = destroyed;
}

void FakeHost::RegisterShutdownCallback(XW_Extension /*extension*/, XW_ShutdownCallback shutdown) {
  g_host->shutdown_ = shutdown;
}

void FakeHost::SetInstanceData(XW_Instance instance, void* data) {
  const auto found = g_host->data_.find(instance);
  if (found != g_host->data_.end()) {
    found->second = data;
  }
}

void* FakeHost::GetInstanceData(XW_Instance instance) { return g_host->data(instance); }

void FakeHost::Register(XW_Extension /*extension*/, XW_HandleMessageCallback handle_message) {
  g_host->handle_message_ = handle_message;
}

void FakeHost::PostMessage(XW_Instance instance, const char* message) {
  const std::lock_guard<std::mutex> lock(g_host->mutex_);
  const auto found = g_host->posts_.find(instance);
  if (found == g_host->posts_.end()) {
    ++g_host->dropped_posts_;
    return;
  }
  found->second.emplace_back(message);
  g_host->posted_.notify_all();
}

void FakeHost::RegisterSync(XW_Extension /*extension*/, XW_HandleMessageCallback handle_message) {
  g_host->handle_sync_message_ = handle_message;
}

void FakeHost::SetSyncReply(XW_Instance /*instance*/, const char* reply) { g_host->reply_ = reply; }

void FakeHost::SetExtraJSEntryPoints(XW_Extension /*extension*/, const char** entry_points) {
  for (; *entry_points != nullptr; ++entry_points) {
    g_host->entry_points_.emplace_back(*entry_points);
  }
}

void FakeHost::GetRuntimeVariableString(XW_Extension /*extension*/, const char* key, char* value,
                                        size_t size) {
  const auto found = g_host->variables_.find(key);
  snprintf(value, size, "%s", found == g_host->variables_.end() ? "" : found->second.c_str());
}

}  // namespace orvane::test
