// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/instance.h"

#include <utility>

#include "extensions/extension_state.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"
#include "extensions/thread_entry.h"

namespace orvane::extensions {

Instance::Instance(std::shared_ptr<InstanceState> state) : state_(std::move(state)) {}

Instance::~Instance() {
  HostContext& context = state_->extension().context();
  if (context.OnExtensionThread()) {
    state_->Destroy();
  } else if (state_->is_alive()) {
    state_->Abandon();
    context.Warn("An instance of " + state_->extension().Describe() +
                 " was let go on another thread than the extension thread; its destroyed callback "
                 "runs when the extension thread next calls the host.");
  }
}

// In the members below the copy of `state_` lives on when a handler leads to the destruction of
// this object.

void Instance::PostMessage(const std::string& text) {
  const std::shared_ptr<InstanceState> state = state_;
  EnterInstance(*state, "Instance::PostMessage");
  state->HandleMessage(text);
}

void Instance::PostBinaryMessage(std::string_view bytes) {
  const std::shared_ptr<InstanceState> state = state_;
  EnterInstance(*state, "Instance::PostBinaryMessage");
  state->HandleBinaryMessage(bytes);
}

std::string Instance::SendSyncMessage(const std::string& text) {
  const std::shared_ptr<InstanceState> state = state_;
  EnterInstance(*state, "Instance::SendSyncMessage");
  return state->HandleSyncMessage(text);
}

void Instance::EndWaits() { state_->sync_calls().End(); }

XW_Instance Instance::handle() const { return state_->handle(); }

}  // namespace orvane::extensions
