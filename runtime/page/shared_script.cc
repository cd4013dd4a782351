// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/shared_script.h"

// The engine's library has these functions, but the C headers that the distribution ships leave
// them out. As weak symbols they are simply absent from an engine without them, and the public way
// is taken.
extern "C" {
__attribute__((weak)) orvane::page::EngineScript* JSScriptCreateFromString(
    JSContextGroupRef group, JSStringRef url, int first_line, JSStringRef source,
    JSStringRef* error_message, int* error_line);
__attribute__((weak)) JSValueRef JSScriptEvaluate(JSContextRef context,
                                                  orvane::page::EngineScript* script,
                                                  JSValueRef this_value, JSValueRef* exception);
__attribute__((weak)) void JSScriptRelease(orvane::page::EngineScript* script);
}

namespace orvane::page {

SharedScript::SharedScript(JSContextGroupRef group, const std::string& source,
                           const std::string& name)
    : source_(source), name_(name) {
  if (JSScriptCreateFromString == nullptr || JSScriptEvaluate == nullptr ||
      JSScriptRelease == nullptr)
    return;
  // What is wrong with a source comes out when it is evaluated.
  script_ = JSScriptCreateFromString(group, name_.get(), 1, source_.get(), nullptr, nullptr);
}

SharedScript::~SharedScript() {
  if (script_ != nullptr) JSScriptRelease(script_);
}

JSValueRef SharedScript::Evaluate(JSContextRef context, JSValueRef* exception) const {
  return script_ != nullptr
             ? JSScriptEvaluate(context, script_, nullptr, exception)
             : JSEvaluateScript(context, source_.get(), nullptr, name_.get(), 1, exception);
}

}  // namespace orvane::page
