// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/instance.h"

#include <optional>
#include <utility>

#include "extensions/callback_frame.h"
#include "extensions/extension.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"
#include "extensions/warnings.h"

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

// What it returns lives on when a handler leads to the destruction of this object.
std::shared_ptr<InstanceState> Instance::Enter(const char* call) const {
  std::shared_ptr<InstanceState> state = state_;
  state->extension().context().Enter(call);
  if (state->is_alive()) return state;
  throw HostError(std::string(call) +
                  ": the instance was destroyed with its host. Destroy instances first, and use "
                  "none of them afterwards.");
}

void Instance::PostMessage(const std::string& text) {
  const std::shared_ptr<InstanceState> state = Enter("Instance::PostMessage");
  Extension& extension = state->extension();
  const XW_HandleMessageCallback handler = extension.registration().handle_message;
  if (handler == nullptr) {
    extension.context().Warn(extension.Describe() +
                             " has no message handler; the message is lost: " + Excerpt(text));
    return;
  }
  const std::optional<std::string> escaped =
      RunCallback(extension, state.get(), [&] { handler(state->handle(), text.c_str()); });
  if (escaped) state->WarnAboutEscape("The handler of the message " + Excerpt(text), *escaped);
}

void Instance::PostBinaryMessage(std::string_view bytes) {
  const std::shared_ptr<InstanceState> state = Enter("Instance::PostBinaryMessage");
  Extension& extension = state->extension();
  const XW_HandleBinaryMessageCallback handler = extension.registration().handle_binary_message;
  if (handler == nullptr) {
    extension.context().Warn(extension.Describe() +
                             " has no binary message handler; a message of " +
                             std::to_string(bytes.size()) + " bytes is lost.");
    return;
  }
  const std::optional<std::string> escaped = RunCallback(
      extension, state.get(), [&] { handler(state->handle(), bytes.data(), bytes.size()); });
  if (escaped) state->WarnAboutEscape("The handler of a binary message", *escaped);
}

std::string Instance::SendSyncMessage(const std::string& text) {
  const std::shared_ptr<InstanceState> state = Enter("Instance::SendSyncMessage");
  Extension& extension = state->extension();
  const XW_HandleSyncMessageCallback handler = extension.registration().handle_sync_message;
  if (handler == nullptr) {
    throw HostError(
        extension.Describe() +
        " has no handler for synchronous messages, so none is answered: " + Excerpt(text));
  }
  SyncCalls::Call call(state->sync_calls());
  const std::optional<std::string> escaped =
      RunCallback(extension, state.get(), [&] { handler(state->handle(), text.c_str()); });
  if (escaped) {
    throw HostError("The handler of the synchronous message " + Excerpt(text) +
                    " threw: " + *escaped + " (" + extension.Describe() +
                    "). No exception may leave a handler.");
  }
  const std::chrono::milliseconds deadline = extension.context().options().sync_deadline;
  std::optional<std::string> reply = call.Wait(deadline);
  if (reply) return std::move(*reply);
  throw HostError("No reply within " + std::to_string(deadline.count()) +
                  " ms to the synchronous message " + Excerpt(text) + ": " + extension.Describe() +
                  " must call SetSyncReply once for every such message, on failure too.");
}

void Instance::EndWaits() { state_->sync_calls().End(); }

XW_Instance Instance::handle() const { return state_->handle(); }

}  // namespace orvane::extensions
