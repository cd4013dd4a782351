// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/instance_state.h"

#include <optional>
#include <utility>

#include "extensions/callback_frame.h"
#include "extensions/extension_state.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/registry.h"
#include "extensions/warnings.h"

namespace orvane::extensions {

InstanceState::InstanceState(std::shared_ptr<ExtensionState> extension, InstanceClient& client)
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
  Registry::Process().RemoveInstance(handle_);
  alive_.store(false, std::memory_order_release);
  client_gate_.Close();
  sync_calls_.End();
}

void InstanceState::Abandon() {
  sync_calls_.End();
  client_gate_.Close();
  abandoned_ = true;
  extension_->context().has_abandoned_instances() = true;
}

void InstanceState::HandleMessage(const std::string& text) {
  const XW_HandleMessageCallback handler = extension_->registration().handle_message;
  if (handler == nullptr) {
    extension_->context().Warn(extension_->Describe() +
                               " has no message handler; the message is lost: " + Excerpt(text));
    return;
  }
  const std::optional<std::string> escaped =
      RunCallback(*extension_, this, [&] { handler(handle_, text.c_str()); });
  if (escaped) WarnAboutEscape(("The handler of the message " + Excerpt(text)).c_str(), *escaped);
}

void InstanceState::HandleBinaryMessage(std::string_view bytes) {
  const XW_HandleBinaryMessageCallback handler = extension_->registration().handle_binary_message;
  if (handler == nullptr) {
    extension_->context().Warn(extension_->Describe() +
                               " has no binary message handler; a message of " +
                               std::to_string(bytes.size()) + " bytes is lost.");
    return;
  }
  const std::optional<std::string> escaped =
      RunCallback(*extension_, this, [&] { handler(handle_, bytes.data(), bytes.size()); });
  if (escaped) WarnAboutEscape("The handler of a binary message", *escaped);
}

std::string InstanceState::HandleSyncMessage(const std::string& text) {
  const XW_HandleSyncMessageCallback handler = extension_->registration().handle_sync_message;
  if (handler == nullptr) {
    throw HostError(
        extension_->Describe() +
        " has no handler for synchronous messages, so none is answered: " + Excerpt(text));
  }
  SyncCalls::Call call(sync_calls_);
  const std::optional<std::string> escaped =
      RunCallback(*extension_, this, [&] { handler(handle_, text.c_str()); });
  if (escaped) {
    throw HostError("The handler of the synchronous message " + Excerpt(text) +
                    " threw: " + *escaped + " (" + extension_->Describe() +
                    "). No exception may leave a handler.");
  }
  const std::chrono::milliseconds deadline = extension_->context().options().sync_deadline;
  std::optional<std::string> reply = call.Wait(deadline);
  if (reply) return std::move(*reply);
  throw HostError("No reply within " + std::to_string(deadline.count()) +
                  " ms to the synchronous message " + Excerpt(text) + ": " +
                  extension_->Describe() +
                  " must call SetSyncReply once for every such message, on failure too.");
}

void InstanceState::WarnAboutEscape(const char* callback, const std::string& escaped) {
  extension_->context().Warn(std::string(callback) + " threw: " + escaped + " (" +
                             extension_->Describe() + "). No exception may leave a callback.");
}

}  // namespace orvane::extensions
