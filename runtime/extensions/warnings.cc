// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/warnings.h"

#include <memory>

#include "extensions/callback_frame.h"
#include "extensions/extension.h"
#include "extensions/host_context.h"
#include "extensions/registry.h"

namespace orvane::extensions {
namespace {

bool IsOfOtherKind(HandleKind kind, int32_t handle) {
  Registry& registry = Registry::Process();
  return kind == HandleKind::kExtension ? registry.instances().Find(handle) != nullptr
                                        : registry.extensions().Find(handle) != nullptr;
}

std::string DeadHandleText(HandleKind kind, int32_t handle) {
  const std::string number = std::to_string(handle);
  std::string wanted = "extension";
  std::string other = "instance";
  if (kind == HandleKind::kInstance) wanted.swap(other);
  if (IsOfOtherKind(kind, handle)) {
    return number + " is the handle of an " + other + "; the call did nothing. Pass the " + wanted +
           "'s handle.";
  }
  return wanted + " handle " + number +
         " is not alive (never given, or destroyed already); the call did nothing. Use a handle "
         "only between its first callback and its last.";
}

}  // namespace

void WarnAboutCall(Extension& extension, const char* call, const std::string& text) {
  extension.context().Warn(std::string(call) + ": " + text + " (" + extension.Describe() + ")");
}

void WarnAboutCall(const char* call, const std::string& text) noexcept {
  try {
    if (const CallbackFrame* frame = CallbackFrame::innermost()) {
      WarnAboutCall(frame->extension(), call, text);
      return;
    }
    const std::string whole = std::string(call) + ": " + text;
    for (const auto& host : Registry::Process().hosts().All()) host->Warn(whole);
  } catch (...) {
    // No memory for the text.
  }
}

void WarnAboutDeadHandle(HandleKind kind, const char* call, int32_t handle) {
  WarnAboutCall(call, DeadHandleText(kind, handle));
}

}  // namespace orvane::extensions
