// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/native_object.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane::page {

void NativeCall::ReadText(size_t index, std::string* text) const {
  JSValueRef exception = nullptr;
  const JsString string(JSValueToStringCopy(context, (*this)[index], &exception));
  if (string.get() == nullptr) throw ThrownValue{exception};
  string.CopyTo(text);
}

std::string NativeCall::Text(size_t index) const {
  std::string text;
  ReadText(index, &text);
  return text;
}

int NativeCall::Int(size_t index) const {
  using Limits = std::numeric_limits<int>;
  JSValueRef exception = nullptr;
  const double number = JSValueToNumber(context, (*this)[index], &exception);
  if (exception != nullptr) throw ThrownValue{exception};
  if (std::isnan(number)) return 0;
  return static_cast<int>(std::clamp<double>(number, Limits::min(), Limits::max()));
}

JSObjectRef NativeCall::Function(size_t index, const char* what) const {
  const JSValueRef value = (*this)[index];
  JSObjectRef object =
      JSValueIsObject(context, value) ? JSValueToObject(context, value, nullptr) : nullptr;
  if (object == nullptr || !JSObjectIsFunction(context, object)) {
    throw std::invalid_argument(std::string(what) + " must be a function.");
  }
  return object;
}

JSValueRef MakeError(JSContextRef context, const char* message) {
  const JSValueRef text = MakeText(context, message);
  return JSObjectMakeError(context, 1, &text, nullptr);
}

JSClassRef MakeNativeClass(const char* name, const JSStaticFunction* functions,
                           JSObjectCallAsFunctionCallback call) {
  JSClassDefinition definition = kJSClassDefinitionEmpty;
  definition.className = name;
  definition.attributes = kJSClassAttributeNoAutomaticPrototype;
  definition.staticFunctions = functions;
  definition.callAsFunction = call;
  return JSClassCreate(&definition);
}

ProtectedFunction Protect(JSContextRef context, JSObjectRef function) {
  JSValueProtect(context, function);
  return {function, [context](JSObjectRef kept) { JSValueUnprotect(context, kept); }};
}

}  // namespace orvane::page
