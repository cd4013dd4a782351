// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/js_string.h"

#include <cstdint>

namespace orvane::page {
namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";
// Above this a buffer that is kept for the next string is given back.
constexpr size_t kKeptCapacity = size_t{1} << 20;

void AppendCodePoint(uint32_t code, std::string* utf8) {
  const auto add = [utf8](uint32_t byte) { utf8->push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0 | code >> 6);
    add(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    add(0xE0 | code >> 12);
    add(0x80 | (code >> 6 & 0x3F));
    add(0x80 | (code & 0x3F));
  } else {
    add(0xF0 | code >> 18);
    add(0x80 | (code >> 12 & 0x3F));
    add(0x80 | (code >> 6 & 0x3F));
    add(0x80 | (code & 0x3F));
  }
}

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
void CopyWithReplacements(JSStringRef string, std::string* utf8) {
  const JSChar* units = JSStringGetCharactersPtr(string);
  const size_t count = JSStringGetLength(string);
  utf8->clear();
  for (size_t i = 0; i < count; ++i) {
    const uint32_t unit = units[i];
    if (IsHighSurrogate(unit) && i + 1 < count && IsLowSurrogate(units[i + 1])) {
      AppendCodePoint(0x10000 + ((unit & 0x3FF) << 10) + (units[i + 1] & 0x3FFu), utf8);
      ++i;
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      utf8->append(kReplacement);
    } else {
      AppendCodePoint(unit, utf8);
    }
  }
}

// The length of the valid UTF-8 sequence at the start of `bytes`; 0 when there is none.
size_t SequenceLength(std::string_view bytes) {
  const auto at = [bytes](size_t i) {
    return static_cast<uint32_t>(static_cast<unsigned char>(bytes[i]));
  };
  const uint32_t first = at(0);
  if (first < 0x80) return 1;
  const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || bytes.size() < length) return 0;
  uint32_t code = first & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((at(i) & 0xC0) != 0x80) return 0;
    code = code << 6 | (at(i) & 0x3F);
  }
  const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  return overlong || code > 0x10FFFF || (code & 0xFFFFF800) == 0xD800 ? 0 : length;
}

}  // namespace

JsString::JsString(const std::string& utf8) : string_(JSStringCreateWithUTF8CString(utf8.c_str())) {
  // The engine makes an empty string of a text that it cannot read.
  if (!utf8.empty() && utf8[0] != '\0' && JSStringGetLength(string_) == 0) {
    JSStringRelease(string_);
    string_ = JSStringCreateWithUTF8CString(RepairUtf8(utf8.c_str()).c_str());
  }
}

void JsString::CopyTo(std::string* utf8) const {
  utf8->resize(JSStringGetMaximumUTF8CStringSize(string_));
  const size_t size = JSStringGetUTF8CString(string_, utf8->data(), utf8->size());
  utf8->resize(size > 0 ? size - 1 : 0);
  // The engine stops at a lone surrogate.
  if (CountUnits(*utf8) != JSStringGetLength(string_)) CopyWithReplacements(string_, utf8);
  if (utf8->capacity() > kKeptCapacity) utf8->shrink_to_fit();
}

std::string JsString::ToUtf8() const {
  std::string utf8;
  CopyTo(&utf8);
  return utf8;
}

std::string RepairUtf8(std::string_view bytes) {
  std::string repaired;
  while (!bytes.empty()) {
    const size_t length = SequenceLength(bytes);
    if (length == 0) {
      repaired.append(kReplacement);
    } else {
      repaired.append(bytes.substr(0, length));
    }
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
  return repaired;
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
