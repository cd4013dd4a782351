// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <JavaScriptCore/JavaScript.h>

namespace orvane::page {

// Owns one of the engine's strings. Its contents never change.
class JsString {
 public:
  // What is not valid UTF-8 is replaced by U+FFFD. Ends at the first NUL.
  explicit JsString(const std::string& utf8);
  explicit JsString(JSStringRef owned) : string_(owned) {}

  JSStringRef get() const { return string_.get(); }

  // Writes the string to `utf8` as UTF-8, reusing its memory; a lone surrogate becomes U+FFFD.
  void CopyTo(std::string* utf8) const;
  std::string ToUtf8() const;

 private:
  struct Release {
    void operator()(JSStringRef string) const { JSStringRelease(string); }
  };
  std::unique_ptr<OpaqueJSString, Release> string_;
};

// The value's text as the script's String() gives it; empty when that throws.
std::string TextOf(JSContextRef context, JSValueRef value);

JSValueRef MakeText(JSContextRef context, const std::string& utf8);

// object[name], or undefined when reading it throws.
JSValueRef PropertyOf(JSContextRef context, JSObjectRef object, const char* name);

}  // namespace orvane::page
