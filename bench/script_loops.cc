// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "script_loops.h"

#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace bench {

namespace {

constexpr const char* kAnswer = "01234567890123456789012345678901234567890123";
static_assert(std::char_traits<char>::length(kAnswer) == 44);

std::string ToText(JSContextRef context, JSValueRef value) {
  JSStringRef string = JSValueToStringCopy(context, value, nullptr);
  std::string text(JSStringGetMaximumUTF8CStringSize(string), '\0');
  text.resize(JSStringGetUTF8CString(string, text.data(), text.size()) - 1);
  JSStringRelease(string);
  return text;
}

void Check(JSContextRef context, JSValueRef exception) {
  if (exception != nullptr) {
    throw std::runtime_error(ToText(context, exception));
  }
}

// The least that a native function can do with a text: copy it out, and make another.
JSValueRef CallNative(JSContextRef context, JSObjectRef /*function*/, JSObjectRef /*self*/,
                      size_t /*count*/, const JSValueRef arguments[], JSValueRef* exception) {
  std::array<char, 512> text;
  JSStringRef argument = JSValueToStringCopy(context, arguments[0], exception);
  JSStringGetUTF8CString(argument, text.data(), text.size());
  JSStringRelease(argument);
  JSStringRef answer = JSStringCreateWithUTF8CString(kAnswer);
  JSValueRef result = JSValueMakeString(context, answer);
  JSStringRelease(answer);
  return result;
}

JSValueRef GetProperty(JSContextRef context, JSObjectRef object, const char* name) {
  JSStringRef key = JSStringCreateWithUTF8CString(name);
  JSValueRef value = JSObjectGetProperty(context, object, key, nullptr);
  JSStringRelease(key);
  return value;
}

}  // namespace

JSValueRef Evaluate(JSContextRef context, const std::string& source) {
  JSStringRef script = JSStringCreateWithUTF8CString(source.c_str());
  JSValueRef exception = nullptr;
  JSValueRef value = JSEvaluateScript(context, script, nullptr, nullptr, 1, &exception);
  JSStringRelease(script);
  Check(context, exception);
  return value;
}

void DefineLoops(JSContextRef context) {
  JSStringRef name = JSStringCreateWithUTF8CString("native");
  JSObjectRef function = JSObjectMakeFunctionWithCallback(context, name, CallNative);
  JSObjectSetProperty(context, JSContextGetGlobalObject(context), name, function,
                      kJSPropertyAttributeNone, nullptr);
  JSStringRelease(name);
  std::ifstream file(ORVANE_BENCH_LOOPS);
  Evaluate(context, std::string(std::istreambuf_iterator<char>(file), {}));
}

void RunLoop(JSContextRef context, const char* name, int64_t count) {
  auto* const loops =
      const_cast<JSObjectRef>(GetProperty(context, JSContextGetGlobalObject(context), "loops"));
  auto* const loop = const_cast<JSObjectRef>(GetProperty(context, loops, name));
  JSValueRef argument = JSValueMakeNumber(context, static_cast<double>(count));
  JSValueRef exception = nullptr;
  JSObjectCallAsFunction(context, loop, loops, 1, &argument, &exception);
  Check(context, exception);
}

}  // namespace bench
