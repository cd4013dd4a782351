// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/thread_entry.h"

#include <string>

#include "extensions/callback_frame.h"
#include "extensions/extension_state.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"
#include "extensions/registry.h"

namespace orvane::extensions {
namespace {

void DestroyAbandonedInstances(HostContext& context) {
  context.has_abandoned_instances() = false;
  for (const auto& instance : Registry::Process().instances()) {
    const bool is_ours = &instance->extension().context() == &context;
    if (is_ours && instance->is_abandoned()) instance->Destroy();
  }
}

}  // namespace

void EnterHost(HostContext& context, const char* call) {
  context.CheckThread(call);
  const bool has_abandoned = context.has_abandoned_instances().load(std::memory_order_relaxed);
  if (has_abandoned && CallbackFrame::innermost() == nullptr) DestroyAbandonedInstances(context);
}

void EnterInstance(InstanceState& instance, const char* call) {
  EnterHost(instance.extension().context(), call);
  if (instance.is_alive()) return;
  throw HostError(std::string(call) +
                  ": the instance was destroyed with its host. Destroy instances "
                  "first, and use none of them afterwards.");
}

}  // namespace orvane::extensions
