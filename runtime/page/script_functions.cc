// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Functions that C++ gives to the page's scripts by name: Page::DefineFunction.
#include <stdexcept>
#include <utility>

#include "page/page_core.h"

namespace orvane::page {
namespace {

std::string ArgumentsAsJson(JSContextRef context, size_t count, const JSValueRef arguments[]) {
  JSValueRef exception = nullptr;
  JSObjectRef array = JSObjectMakeArray(context, count, arguments, &exception);
  if (exception != nullptr) throw ThrownValue{exception};
  const JsString json(JSValueCreateJSONString(context, array, 0, &exception));
  if (json.get() == nullptr) throw ThrownValue{exception};
  return json.ToUtf8();
}

JSValueRef CallScriptFunction(JSContextRef context, JSObjectRef self, JSObjectRef, size_t count,
                              const JSValueRef arguments[], JSValueRef* exception) {
  return GuardNative(context, exception, [&] {
    const auto& function = *static_cast<const ScriptFunction*>(JSObjectGetPrivate(self));
    const std::string result = function(ArgumentsAsJson(context, count, arguments));
    if (result.empty()) return JSValueMakeUndefined(context);
    const JSValueRef value = JSValueMakeFromJSONString(context, JsString(result).get());
    if (value == nullptr) {
      throw std::runtime_error("The function answered what is no JSON: " + result);
    }
    return value;
  });
}

JSClassRef ScriptFunctionClass() {
  static OpaqueJSClass* const kClass = MakeNativeClass("Function", nullptr, CallScriptFunction);
  return kClass;
}

void SetMember(JSContextRef context, JSObjectRef owner, const std::string& name, JSValueRef value) {
  JSObjectSetProperty(context, owner, JsString(name).get(), value, kJSPropertyAttributeNone,
                      nullptr);
}

JSObjectRef MemberObject(JSContextRef context, JSObjectRef holder, const std::string& name) {
  const JSValueRef value = PropertyOf(context, holder, name.c_str());
  if (JSValueIsObject(context, value)) return JSValueToObject(context, value, nullptr);
  JSObjectRef made = JSObjectMake(context, nullptr, nullptr);
  SetMember(context, holder, name, made);
  return made;
}

}  // namespace

void PageCore::DefineFunction(const std::string& dotted_name, ScriptFunction function) {
  script_functions_.push_back(std::make_unique<ScriptFunction>(std::move(function)));
  JSObjectRef holder = JSContextGetGlobalObject(context_);
  std::string name = dotted_name;
  for (size_t dot = name.find('.'); dot != std::string::npos; dot = name.find('.')) {
    holder = MemberObject(context_, holder, name.substr(0, dot));
    name.erase(0, dot + 1);
  }
  SetMember(context_, holder, name,
            JSObjectMake(context_, ScriptFunctionClass(), script_functions_.back().get()));
}

}  // namespace orvane::page
