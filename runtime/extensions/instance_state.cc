// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/instance_state.h"

#include <optional>
#include <utility>

#include "extensions/callback_frame.h"
#include "extensions/extension.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/registry.h"

namespace orvane::extensions {

InstanceState::InstanceState(std::shared_ptr<Extension> extension, InstanceClient& client)
    : handle_(Registry::Process().NewHandle()), extension_(std::move(extension)), client_(client) {}

void InstanceState::Create() {
  const XW_CreatedInstanceCallback created = extension_->registration().created;
  if (created == nullptr) return;
  const std::optional<std::string> escaped =
      RunCallback(*extension_, this, [&] { created(handle_); });
  if (!escaped) return;
  destroying_ = true;
  Die();
  throw HostError("The instance-created callback of " + extension_->Describe() + " threw: " +
                  *escaped + ". There is no instance; no exception may leave a callback.");
}

void InstanceState::Destroy() {
  if (destroying_) return;
  destroying_ = true;
  const XW_DestroyedInstanceCallback destroyed = extension_->registration().destroyed;
  if (destroyed != nullptr) {
    const std::optional<std::string> escaped =
        RunCallback(*extension_, this, [&] { destroyed(handle_); });
    if (escaped) WarnAboutEscape("The instance-destroyed callback", *escaped);
  }
  Die();
}

// The order matters: whoever finds the gate closed must see that the instance is dead.
void InstanceState::Die() {
  Registry::Process().instances().Remove(handle_);
  alive_.store(false, std::memory_order_release);
  client_gate_.Close();
  sync_calls_.End();
}

void InstanceState::Abandon() {
  sync_calls_.End();
  client_gate_.Close();
  abandoned_ = true;
  extension_->context().NoteAbandonedInstance();
}

void InstanceState::WarnAboutEscape(const std::string& callback, const std::string& escaped) {
  extension_->context().Warn(callback + " threw: " + escaped + " (" + extension_->Describe() +
                             "). No exception may leave a callback.");
}

}  // namespace orvane::extensions
