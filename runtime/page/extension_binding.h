// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <JavaScriptCore/JavaScript.h>

#include "extensions/extension.h"
#include "extensions/instance.h"
#include "extensions/instance_client.h"
#include "page/clock.h"
#include "page/native_object.h"
#include "page/trace_sink.h"

namespace orvane::page {

class PageWorkQueue;
class PageCore;

// One extension in one page: owns the instance, and is the native side of the script's `extension`
// object. Owned by its PageCore. Page thread only, but for the two callbacks of the InstanceClient,
// which come from any thread and post work for the page.
class ExtensionBinding final : public NativeObject, public extensions::InstanceClient {
 public:
  static JSClassRef NativeClass();

  // `id` is its number in its page. Creates the instance; throws HostError when the extension
  // refuses.
  ExtensionBinding(PageCore& page, extensions::Extension& extension, uint64_t id);
  ~ExtensionBinding() override;

  ExtensionBinding(const ExtensionBinding&) = delete;
  ExtensionBinding& operator=(const ExtensionBinding&) = delete;

  int pending_replies() const { return pending_replies_; }

  // The page closes: nothing reaches the script from now on.
  void DropListener() { listener_.reset(); }

  void OnMessage(std::string_view text) override { Post(TraceKind::kNativePost, text); }
  void OnBinaryMessage(std::string_view bytes) override { Post(TraceKind::kNativeBinary, bytes); }

 private:
  // The functions of the native side, see js/extension.js.
  JSValueRef EvaluateScript(const NativeCall& call);
  JSValueRef PostMessage(const NativeCall& call);
  JSValueRef SetMessageListener(const NativeCall& call);
  JSValueRef SendSyncMessage(const NativeCall& call);
  JSValueRef SetPendingReplies(const NativeCall& call);
  template <JSValueRef (PageCore::*kFunction)(const NativeCall&)>
  JSValueRef OfPage(const NativeCall& call);  // one that is the same for every extension

  bool PostBytes(const NativeCall& call);
  void Post(TraceKind kind, std::string_view payload);
  void Deliver(TraceKind kind, const std::string& payload, Clock::TimePoint posted);
  void Trace(TraceDirection direction, TraceKind kind, std::string_view payload,
             Clock::TimePoint since) const;

  // Fixed after construction.
  PageCore& page_;
  extensions::Extension& extension_;
  const uint64_t id_;
  const std::shared_ptr<PageWorkQueue> work_queue_;
  Clock& clock_;

  ProtectedFunction listener_;
  int pending_replies_ = 0;
  std::string text_;  // of the message being sent; kept for its memory
  std::unique_ptr<extensions::Instance> instance_;
};

}  // namespace orvane::page
