// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The functions of a PageCore that the runtime's own scripts call: the `host` of js/main.js.
#include <utility>

#include "base/json.h"
#include "extensions/extension_host.h"
#include "page/describe_error.h"
#include "page/page_core.h"

namespace orvane::page {
namespace {

JSValueRef MakeFromJson(JSContextRef context, const Json& json) {
  return JSValueMakeFromJSONString(context, JsString(base::JsonText(json)).get());
}

}  // namespace

JSClassRef PageCore::NativeClass() {
  using Self = PageCore;
  static const JSStaticFunction kFunctions[] = {
      NativeFunction<Self, &Self::CreateInstance>("createInstance"),
      NativeFunction<Self, &Self::Extensions>("extensions"),
      NativeFunction<Self, &Self::HasPrivilege>("hasPrivilege"),
      NativeFunction<Self, &Self::MoveWindow>("moveWindow"),
      NativeFunction<Self, &Self::SetQuarterPosition>("setQuarterPosition"),
      NativeFunction<Self, &Self::WidgetInfo>("widgetInfo"),
      NativeFunction<Self, &Self::AddTimer>("addTimer"),
      NativeFunction<Self, &Self::RemoveTimer>("removeTimer"),
      NativeFunction<Self, &Self::WriteConsole>("writeConsole"),
      NativeFunction<Self, &Self::ReportError>("reportError"),
      {nullptr, nullptr, 0}};
  static OpaqueJSClass* const kClass = MakeNativeClass("PageHost", kFunctions);
  return kClass;
}

JSValueRef PageCore::Extensions(const NativeCall& call) {
  Json json = Json::array();
  for (const auto& entry : runtime_.host().catalogue()) {
    json.push_back({{"name", entry.name}, {"entryPoints", entry.entry_points}});
  }
  return MakeFromJson(call.context, json);
}

JSValueRef PageCore::CreateInstance(const NativeCall& call) {
  extensions::Extension* const extension = runtime_.host().Find(call.Text(0));
  if (extension == nullptr) return JSValueMakeNull(call.context);
  const uint64_t id = ++last_binding_;
  const auto added =
      bindings_.emplace(id, std::make_unique<ExtensionBinding>(*this, *extension, id));
  NativeObject* const binding = added.first->second.get();
  return JSObjectMake(call.context, ExtensionBinding::NativeClass(), binding);
}

JSValueRef PageCore::AddTimer(const NativeCall& call) {
  const ProtectedFunction function = Protect(context_, call.Function(0, "A timer's handler"));
  const bool repeats = JSValueToBoolean(call.context, call[2]);
  const int32_t timer =
      timers_.Add(std::chrono::milliseconds(call.Int(1)),
                  repeats ? TimerQueue::Repeat::kInterval : TimerQueue::Repeat::kOnce,
                  runtime_.clock().Now(), [this, function] { Call(function.get(), 0, nullptr); });
  return JSValueMakeNumber(call.context, timer);
}

JSValueRef PageCore::RemoveTimer(const NativeCall& call) {
  timers_.Remove(call.Int(0));
  return JSValueMakeUndefined(call.context);
}

JSValueRef PageCore::WriteConsole(const NativeCall& call) {
  if (options_.console != nullptr) {
    options_.console->OnConsole(static_cast<ConsoleLevel>(std::clamp(call.Int(0), 0, 4)),
                                call.Text(1));
  }
  return JSValueMakeUndefined(call.context);
}

JSValueRef PageCore::ReportError(const NativeCall& call) {
  Report(DescribeError(call.context, call[0], {}));
  return JSValueMakeUndefined(call.context);
}

JSValueRef PageCore::ReportRejection(const NativeCall& call) {
  ScriptError error = DescribeError(call.context, call[1], {});
  error.message.insert(0, "Unhandled promise rejection: ");
  Report(error);
  return JSValueMakeUndefined(call.context);
}

JSClassRef PageCore::RejectionHandlerClass() {
  // The object is the function and the native object in one.
  static OpaqueJSClass* const kClass =
      MakeNativeClass("Function", nullptr,
                      [](JSContextRef context, JSObjectRef function, JSObjectRef, size_t count,
                         const JSValueRef arguments[], JSValueRef* exception) {
                        return CallNative<PageCore, &PageCore::ReportRejection>(
                            context, function, function, count, arguments, exception);
                      });
  return kClass;
}

JSValueRef PageCore::HasPrivilege(const NativeCall& call) {
  const bool granted = options_.runtime != nullptr && options_.runtime->HasPrivilege(call.Text(0));
  return JSValueMakeBoolean(call.context, granted);
}

JSValueRef PageCore::MoveWindow(const NativeCall& call) {
  return MakeText(call.context, RequireRuntime().MoveWindow(call.Int(0), call.Int(1)));
}

JSValueRef PageCore::SetQuarterPosition(const NativeCall& call) {
  return MakeText(call.context, RequireRuntime().SetQuarterPosition(call.Int(0)));
}

JSValueRef PageCore::WidgetInfo(const NativeCall& call) {
  return MakeFromJson(call.context, {{"id", options_.widget_id},
                                     {"name", options_.widget_name},
                                     {"version", options_.widget_version}});
}

}  // namespace orvane::page
