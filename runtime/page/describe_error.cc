// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/describe_error.h"

#include <charconv>
#include <optional>

#include "page/js_string.h"

namespace orvane::page {
namespace {

struct Place {
  std::string_view file;
  int line = 0;
  int column = 0;
};

bool IsPagesOwn(std::string_view file) {
  return !file.empty() && file.substr(0, kRuntimeScheme.size()) != kRuntimeScheme &&
         file.substr(0, kExtensionScheme.size()) != kExtensionScheme;
}

// Takes ":<number>" off the end of `text`.
std::optional<int> TakeNumber(std::string_view* text) {
  const size_t colon = text->rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  int number = 0;
  const char* end = text->data() + text->size();
  const auto [stop, error] = std::from_chars(text->data() + colon + 1, end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  text->remove_suffix(text->size() - colon);
  return number;
}

// A frame of the engine's stack text: "function@file:line:column".
std::optional<Place> ReadFrame(std::string_view frame) {
  const std::optional<int> column = TakeNumber(&frame);
  const std::optional<int> line = TakeNumber(&frame);
  if (!column || !line) return std::nullopt;
  const size_t at = frame.find('@');
  return Place{at == std::string_view::npos ? frame : frame.substr(at + 1), *line, *column};
}

std::optional<Place> FindPagesOwnFrame(std::string_view stack) {
  while (!stack.empty()) {
    const size_t end = stack.find('\n');
    const std::optional<Place> place = ReadFrame(stack.substr(0, end));
    if (place && IsPagesOwn(place->file)) return place;
    stack = end == std::string_view::npos ? std::string_view() : stack.substr(end + 1);
  }
  return std::nullopt;
}

std::string TextProperty(JSContextRef context, JSObjectRef object, const char* name) {
  const JSValueRef value = PropertyOf(context, object, name);
  return JSValueIsString(context, value) ? TextOf(context, value) : std::string();
}

int IntProperty(JSContextRef context, JSObjectRef object, const char* name) {
  const JSValueRef value = PropertyOf(context, object, name);
  if (!JSValueIsNumber(context, value)) return 0;
  const double number = JSValueToNumber(context, value, nullptr);
  return number > 0 && number < 1e9 ? static_cast<int>(number) : 0;
}

// String() says nothing of a plain object, so that is shown as JSON.
std::string MessageOf(JSContextRef context, JSValueRef thrown) {
  std::string text = TextOf(context, thrown);
  if (!JSValueIsObject(context, thrown) || text != "[object Object]") return text;
  const JsString json(JSValueCreateJSONString(context, thrown, 0, nullptr));
  return json.get() == nullptr ? text : json.ToUtf8();
}

}  // namespace

ScriptError DescribeError(JSContextRef context, JSValueRef thrown, const std::string& file) {
  ScriptError error;
  error.message = MessageOf(context, thrown);
  error.file = file;
  JSObjectRef object =
      JSValueIsObject(context, thrown) ? JSValueToObject(context, thrown, nullptr) : nullptr;
  if (object == nullptr) return error;
  error.stack = TextProperty(context, object, "stack");
  if (const std::optional<Place> place = FindPagesOwnFrame(error.stack)) {
    error.file = place->file;
    error.line = place->line;
    error.column = place->column;
    return error;
  }
  const std::string source = TextProperty(context, object, "sourceURL");
  if (!source.empty()) error.file = source;
  error.line = IntProperty(context, object, "line");
  error.column = IntProperty(context, object, "column");
  return error;
}

}  // namespace orvane::page
