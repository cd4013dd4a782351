// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include <JavaScriptCore/JavaScript.h>

namespace orvane::page {

// Owns one of the engine's strings. Its contents never change.
class JsString {
 public:
  // What is not valid UTF-8 is replaced by U+FFFD. Ends at the first NUL.
  explicit JsString(const std::string& utf8);
  explicit JsString(JSStringRef owned) : string_(owned) {}
  ~JsString() {
    if (string_ != nullptr) JSStringRelease(string_);
  }
  JsString(const JsString&) = delete;
  JsString& operator=(const JsString&) = delete;
  JsString(JsString&& other) noexcept : string_(std::exchange(other.string_, nullptr)) {}
  JsString& operator=(JsString&& other) noexcept {
    std::swap(string_, other.string_);
    return *this;
  }

  JSStringRef get() const { return string_; }

  // Writes the string to `utf8` as UTF-8, reusing its memory; a lone surrogate becomes U+FFFD.
  void CopyTo(std::string* utf8) const;
  std::string ToUtf8() const;

 private:
  JSStringRef string_;
};

// The value's text as the script's String() gives it; empty when that throws.
std::string TextOf(JSContextRef context, JSValueRef value);

JSValueRef MakeText(JSContextRef context, const std::string& utf8);

// object[name], or undefined when reading it throws.
JSValueRef PropertyOf(JSContextRef context, JSObjectRef object, const char* name);

}  // namespace orvane::page
