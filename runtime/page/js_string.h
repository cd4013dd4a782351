// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <JavaScriptCore/JavaScript.h>

namespace orvane::page {

// Owns one of the engine's strings, which are UTF-16. Its contents never change, and it belongs to
// no context: it may be used with all of them, and outlive them. Moved from, it is null.
class JsString {
 public:
  // What is not valid UTF-8 is replaced by U+FFFD. Ends at the first NUL.
  explicit JsString(const std::string& utf8);
  // What one of the engine's …Create or …Copy functions gave, which may be null.
  explicit JsString(JSStringRef owned) : string_(owned) {}

  JSStringRef get() const { return string_.get(); }

  // Writes the string to `utf8` as UTF-8, reusing its memory up to 1 MiB; a lone surrogate becomes
  // U+FFFD. Not for null.
  void CopyTo(std::string* utf8) const;
  std::string ToUtf8() const;

 private:
  struct Release {
    void operator()(JSStringRef string) const { JSStringRelease(string); }
  };
  std::unique_ptr<OpaqueJSString, Release> string_;
};

// The value's text as the script's String() gives it; empty when that throws. May run script: a
// toString of the page's.
std::string TextOf(JSContextRef context, JSValueRef value);

// `utf8` is read as JsString reads it.
JSValueRef MakeText(JSContextRef context, const std::string& utf8);

// object[name], or undefined when reading it throws.
JSValueRef PropertyOf(JSContextRef context, JSObjectRef object, const char* name);

}  // namespace orvane::page
