// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/instance.h"

#include "host_tables.h"

namespace common {

Instance::Instance() = default;

Instance::~Instance() = default;

void Instance::HandleMessage(const char* /*message*/) {}

void Instance::HandleSyncMessage(const char* /*message*/) {}

void Instance::PostMessage(Instance* instance, const char* message) {
  if (instance != nullptr && instance->handle_ != 0) {
    Host().messaging->PostMessage(instance->handle_, message);
  }
}

void Instance::SendSyncReply(const char* reply) {
  if (handle_ != 0) {
    Host().sync_messaging->SetSyncReply(handle_, reply);
  }
}

}  // namespace common
