// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/js_string.h"

#include <cstdint>
#include <vector>

#include "base/utf8.h"

namespace orvane::page {
namespace {

// Above this a buffer that is kept for the next string is given back.
constexpr size_t kKeptCapacity = size_t{1} << 20;

bool IsHighSurrogate(uint32_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(uint32_t unit) { return (unit & 0xFC00) == 0xDC00; }

// How many of UTF-16's units the text has; what begins is counted, and a pair begins with a byte of
// its own.
size_t CountUnits(const std::string& utf8) {
  size_t units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    units += static_cast<size_t>((byte & 0xC0) != 0x80) + static_cast<size_t>(byte >= 0xF0);
  }
  return units;
}

// For the strings that the engine itself will not turn into UTF-8: those with a lone surrogate.
JsString WithReplacements(JSStringRef string) {
  constexpr JSChar kReplacement = 0xFFFD;
  const JSChar* const begin = JSStringGetCharactersPtr(string);
  std::vector<JSChar> units(begin, begin + JSStringGetLength(string));
  for (size_t i = 0; i < units.size(); ++i) {
    const bool pair =
        IsHighSurrogate(units[i]) && i + 1 < units.size() && IsLowSurrogate(units[i + 1]);
    if (pair) {
      ++i;
    } else if (IsHighSurrogate(units[i]) || IsLowSurrogate(units[i])) {
      units[i] = kReplacement;
    }
  }
  return JsString(JSStringCreateWithCharacters(units.data(), units.size()));
}

}  // namespace

JsString::JsString(const std::string& utf8) : string_(JSStringCreateWithUTF8CString(utf8.c_str())) {
  // The engine makes an empty string of a text that it cannot read.
  if (!utf8.empty() && utf8[0] != '\0' && JSStringGetLength(get()) == 0) {
    string_.reset(JSStringCreateWithUTF8CString(base::WellFormedUtf8(utf8.c_str()).c_str()));
  }
}

void JsString::CopyTo(std::string* utf8) const {
  utf8->resize(JSStringGetMaximumUTF8CStringSize(get()));
  const size_t size = JSStringGetUTF8CString(get(), utf8->data(), utf8->size());
  utf8->resize(size > 0 ? size - 1 : 0);
  // The engine stops at a lone surrogate.
  if (CountUnits(*utf8) != JSStringGetLength(get())) {
    return WithReplacements(get()).CopyTo(utf8);
  }
  if (utf8->capacity() > kKeptCapacity) utf8->shrink_to_fit();
}

std::string JsString::ToUtf8() const {
  std::string utf8;
  CopyTo(&utf8);
  return utf8;
}

std::string TextOf(JSContextRef context, JSValueRef value) {
  JSValueRef exception = nullptr;
  const JsString text(JSValueToStringCopy(context, value, &exception));
  return text.get() == nullptr ? std::string() : text.ToUtf8();
}

JSValueRef MakeText(JSContextRef context, const std::string& utf8) {
  return JSValueMakeString(context, JsString(utf8).get());
}

JSValueRef PropertyOf(JSContextRef context, JSObjectRef object, const char* name) {
  JSValueRef exception = nullptr;
  const JsString key{std::string(name)};
  const JSValueRef value = JSObjectGetProperty(context, object, key.get(), &exception);
  return exception == nullptr ? value : JSValueMakeUndefined(context);
}

}  // namespace orvane::page
