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
// object (js/extension.js is its partner). Owned by its PageCore, so it outlives every script that
// can reach it. Page thread only, but for the two callbacks of the InstanceClient, which come from
// any thread, the page's included, and post work for the page.
//
// What the extension posts reaches the script in its order, in a turn of the page's loop, also when
// it was posted while the script was in a call. Without a listener it is dropped then, not kept.
class ExtensionBinding final : public NativeObject, public extensions::InstanceClient {
 public:
  // The class of the native side. Its objects hold a NativeObject.
  static JSClassRef NativeClass();

  // `id` is its number in its page, by which posted work finds it. Creates the instance, which may
  // post at once; throws HostError when the extension's `created` throws.
  ExtensionBinding(PageCore& page, extensions::Extension& extension, uint64_t id);
  ~ExtensionBinding() override;

  ExtensionBinding(const ExtensionBinding&) = delete;
  ExtensionBinding& operator=(const ExtensionBinding&) = delete;

  // How many posted replies the script still waits for, as it said last. The page is not idle
  // before.
  int pending_replies() const { return pending_replies_; }

  // The page closes: nothing reaches the script from now on.
  void DropListener() { listener_.reset(); }

  // Any thread; each copies what it is given.
  void OnMessage(std::string_view text) override { Post(TraceKind::kNativePost, text); }
  void OnBinaryMessage(std::string_view bytes) override { Post(TraceKind::kNativeBinary, bytes); }

 private:
  // The functions of the native side, see js/extension.js.
  // () -> the function that runs the extension's script, see js/extension_wrapper.js
  JSValueRef EvaluateScript(const NativeCall& call);
  // (text, or an ArrayBuffer or a view of one)
  JSValueRef PostMessage(const NativeCall& call);
  // (function, or undefined or null for none): it receives a text or an ArrayBuffer.
  JSValueRef SetMessageListener(const NativeCall& call);
  // (text) -> the reply. What Instance::SendSyncMessage throws, the script catches as an Error.
  JSValueRef SendSyncMessage(const NativeCall& call);
  // (count)
  JSValueRef SetPendingReplies(const NativeCall& call);
  // One that is the same for every extension.
  template <JSValueRef (PageCore::*kFunction)(const NativeCall&)>
  JSValueRef OfPage(const NativeCall& call);

  // False, and nothing done, when the argument is no buffer of bytes.
  bool PostBytes(const NativeCall& call);
  // Any thread: hands a copy over to the page thread.
  void Post(TraceKind kind, std::string_view payload);
  // In the page's loop: calls the listener. `posted` is when the extension gave it.
  void Deliver(TraceKind kind, const std::string& payload, Clock::TimePoint posted);
  void Trace(TraceDirection direction, TraceKind kind, std::string_view payload,
             Clock::TimePoint since) const;

  // Fixed after construction.
  PageCore& page_;
  extensions::Extension& extension_;
  const uint64_t id_;
  const std::shared_ptr<PageWorkQueue> work_queue_;
  Clock& clock_;

  // Null: none.
  ProtectedFunction listener_;
  int pending_replies_ = 0;
  // Of the message being sent; kept for its memory.
  std::string text_;
  // Last: its end waits for calls of OnMessage that run on other threads.
  std::unique_ptr<extensions::Instance> instance_;
};

}  // namespace orvane::page
