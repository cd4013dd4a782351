// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/extension_binding.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "page/page_core.h"
#include "page/page_work_queue.h"
#include "page/shared_script.h"

namespace orvane::page {
namespace {

// The engine frees the copy with the ArrayBuffer.
JSValueRef MakeBuffer(JSContextRef context, const std::string& bytes) {
  void* copy = std::malloc(bytes.empty() ? 1 : bytes.size());
  if (copy == nullptr) throw std::bad_alloc();
  std::copy(bytes.begin(), bytes.end(), static_cast<char*>(copy));
  return JSObjectMakeArrayBufferWithBytesNoCopy(
      context, copy, bytes.size(), [](void* memory, void*) { std::free(memory); }, nullptr,
      nullptr);
}

}  // namespace

template <JSValueRef (PageCore::*kFunction)(const NativeCall&)>
JSValueRef ExtensionBinding::OfPage(const NativeCall& call) {
  return (page_.*kFunction)(call);
}

JSClassRef ExtensionBinding::NativeClass() {
  using Self = ExtensionBinding;
  static const JSStaticFunction kFunctions[] = {
      NativeFunction<Self, &Self::EvaluateScript>("evaluateScript"),
      NativeFunction<Self, &Self::PostMessage>("postMessage"),
      NativeFunction<Self, &Self::SetMessageListener>("setMessageListener"),
      NativeFunction<Self, &Self::SendSyncMessage>("sendSyncMessage"),
      NativeFunction<Self, &Self::OfPage<&PageCore::SendPlain>>("sendRuntimeMessage"),
      NativeFunction<Self, &Self::OfPage<&PageCore::SendSync>>("sendRuntimeSyncMessage"),
      NativeFunction<Self, &Self::OfPage<&PageCore::SendAsync>>("sendRuntimeAsyncMessage"),
      NativeFunction<Self, &Self::SetPendingReplies>("setPendingReplies"),
      {nullptr, nullptr, 0}};
  static OpaqueJSClass* const kClass = MakeNativeClass("NativeExtension", kFunctions);
  return kClass;
}

ExtensionBinding::ExtensionBinding(PageCore& page, extensions::Extension& extension, uint64_t id)
    : page_(page),
      extension_(extension),
      id_(id),
      work_queue_(page.work_queue()),
      clock_(page.runtime().clock()),
      instance_(extension.CreateInstance(this)) {}

ExtensionBinding::~ExtensionBinding() = default;

void ExtensionBinding::Post(TraceKind kind, std::string_view payload) {
  work_queue_->Post(
      [id = id_, kind, payload = std::string(payload), posted = clock_.Now()](PageCore& page) {
        if (ExtensionBinding* binding = page.FindBinding(id)) {
          binding->Deliver(kind, payload, posted);
        }
      });
}

JSValueRef ExtensionBinding::EvaluateScript(const NativeCall& call) {
  JSValueRef exception = nullptr;
  const JSValueRef function =
      page_.runtime().ScriptOf(extension_).Evaluate(call.context, &exception);
  if (exception != nullptr) throw ThrownValue{exception};
  return function;
}

JSValueRef ExtensionBinding::PostMessage(const NativeCall& call) {
  if (!PostBytes(call)) {
    call.ReadText(0, &text_);
    Trace(TraceDirection::kFromPage, TraceKind::kNativePost, text_, {});
    instance_->PostMessage(text_);
  }
  return JSValueMakeUndefined(call.context);
}

bool ExtensionBinding::PostBytes(const NativeCall& call) {
  const JSTypedArrayType type = JSValueGetTypedArrayType(call.context, call[0], nullptr);
  if (type == kJSTypedArrayTypeNone) return false;
  JSObjectRef object = JSValueToObject(call.context, call[0], nullptr);
  const char* start = nullptr;
  size_t size = 0;
  if (type == kJSTypedArrayTypeArrayBuffer) {
    start = static_cast<const char*>(JSObjectGetArrayBufferBytesPtr(call.context, object, nullptr));
    size = JSObjectGetArrayBufferByteLength(call.context, object, nullptr);
  } else if (void* buffer = JSObjectGetTypedArrayBytesPtr(call.context, object, nullptr)) {
    start = static_cast<const char*>(buffer) +
            JSObjectGetTypedArrayByteOffset(call.context, object, nullptr);
    size = JSObjectGetTypedArrayByteLength(call.context, object, nullptr);
  }
  // A buffer that was handed on has no memory.
  const std::string bytes = start == nullptr ? std::string() : std::string(start, size);
  Trace(TraceDirection::kFromPage, TraceKind::kNativeBinary, bytes, {});
  instance_->PostBinaryMessage(bytes);
  return true;
}

JSValueRef ExtensionBinding::SetMessageListener(const NativeCall& call) {
  const JSValueRef listener = call[0];
  listener_ = JSValueIsUndefined(call.context, listener) || JSValueIsNull(call.context, listener)
                  ? nullptr
                  : Protect(page_.context(), call.Function(0, "The message listener"));
  return JSValueMakeUndefined(call.context);
}

JSValueRef ExtensionBinding::SendSyncMessage(const NativeCall& call) {
  call.ReadText(0, &text_);
  if (page_.options().trace == nullptr)
    return MakeText(call.context, instance_->SendSyncMessage(text_));
  Trace(TraceDirection::kFromPage, TraceKind::kNativeSync, text_, {});
  const Clock::TimePoint sent = clock_.Now();
  const std::string reply = instance_->SendSyncMessage(text_);
  Trace(TraceDirection::kToPage, TraceKind::kNativeSync, reply, sent);
  return MakeText(call.context, reply);
}

JSValueRef ExtensionBinding::SetPendingReplies(const NativeCall& call) {
  pending_replies_ = std::max(call.Int(0), 0);
  return JSValueMakeUndefined(call.context);
}

void ExtensionBinding::Deliver(TraceKind kind, const std::string& payload,
                               Clock::TimePoint posted) {
  Trace(TraceDirection::kToPage, kind, payload, posted);
  if (listener_ == nullptr) return;
  const JSValueRef value = kind == TraceKind::kNativeBinary ? MakeBuffer(page_.context(), payload)
                                                            : MakeText(page_.context(), payload);
  page_.Call(listener_.get(), 1, &value);
}

void ExtensionBinding::Trace(TraceDirection direction, TraceKind kind, std::string_view payload,
                             Clock::TimePoint since) const {
  page_.Trace(direction, kind, extension_.name(), payload, since);
}

}  // namespace orvane::page
